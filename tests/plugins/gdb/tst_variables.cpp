#include "livesession.h"
#include "variables.h"

using Env = IExecutionEnvironment;

namespace {
/// Answers as texts, in the order in which they came.
class TextReplies : public InterfaceObject<IDebugReplies>
{
public:
    void threads(const DebugRequest &, const QList<ThreadInfo> &) override {}
    void frames(const DebugRequest &, const QList<StackFrame> &, bool) override {}
    void variables(const DebugRequest &request, const QList<VariableInfo> &list, bool more) override
    {
        QStringList texts;
        for (const VariableInfo &info : list)
            texts.append(u"%1=%2"_s.arg(info.name, info.value));
        last = list;
        add(request, texts.join(u' ') + (more ? u" ..."_s : QString()));
    }
    void value(const DebugRequest &request, const VariableInfo &info) override
    {
        last = {info};
        add(request, u"%1 %2"_s.arg(info.value).arg(info.children));
    }
    void failed(const DebugRequest &request, const QString &reason) override { add(request, u"failed: "_s + reason); }

    QStringList answers;
    QList<quint64> numbers;
    QList<VariableInfo> last;

private:
    void add(const DebugRequest &request, const QString &text)
    {
        numbers.append(request.number);
        answers.append(text);
    }
};
} // namespace

/// Variables as trees, in a native program with classes and containers.
class VariablesTest : public QObject
{
    Q_OBJECT

private:
    Programs m_programs;
    QString m_image;
    std::unique_ptr<LiveSession> m_session; ///< shared by the functions that only read
    bool m_changed = false;                 ///< the function has changed the program
    InterfacePtr<TextReplies> m_replies;
    quint64 m_number = 0;

    InterfacePtr<IVariables> variables() const { return m_session->get<IVariables>(); }
    /// The answer behind the first @p count.
    QString answer(qsizetype count)
    {
        if (!QTest::qWaitFor([&] { return m_replies->answers.size() > count; }))
            return u"no answer"_s;
        return m_replies->answers.constLast();
    }
    QString children(const QString &expression, int first = 0, int count = 100, int format = IVariables::Natural)
    {
        const qsizetype before = m_replies->answers.size();
        variables()->requestChildren({++m_number, 1}, {}, expression, first, count, format, m_replies.get());
        return answer(before);
    }
    QString value(const QString &expression, int format = IVariables::Natural, const StackPlace &place = {})
    {
        const qsizetype before = m_replies->answers.size();
        variables()->requestValue({++m_number, 1}, place, expression, format, m_replies.get());
        return answer(before);
    }
    QString assign(const QString &expression, const QString &value)
    {
        const qsizetype before = m_replies->answers.size();
        variables()->assign({++m_number, 1}, {}, expression, value, IVariables::Natural, m_replies.get());
        return answer(before);
    }
    QString scope(int scope, int first = 0, int count = 100, const StackPlace &place = {})
    {
        const qsizetype before = m_replies->answers.size();
        variables()->requestScope({++m_number, 1}, place, scope, first, count, IVariables::Natural, m_replies.get());
        return answer(before);
    }

private Q_SLOTS:
    void initTestCase()
    {
        m_image = m_programs.tree(u"tree"_s);
        QVERIFY(!m_image.isEmpty());
    }
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".?"_s));
        m_replies = InterfacePtr<TextReplies>(new TextReplies);
        m_changed = false;
        if (m_session)
            return;
        m_session = std::make_unique<LiveSession>(u"native:"_s + m_image);
        QVERIFY(m_session->start());
        m_session->env->runTo(Programs::source(u"tree.cpp"_s), Programs::lineOf(u"tree.cpp"_s, u"// stop here"_s));
        QVERIFY(m_session->waitFor(Env::ProgramPaused));
    }
    void cleanup()
    {
        if (m_changed || QTest::currentTestFailed()) {
            m_session.reset();
            QTRY_COMPARE(ownChildren(), QStringList());
        }
        m_replies.reset();
    }
    void cleanupTestCase()
    {
        m_session.reset();
        QTRY_COMPARE(ownChildren(), QStringList());
    }

    void valuesHaveTheirNumberOfMembers()
    {
        QCOMPARE(value(u"calls"_s), u"1 0"_s);
        QVERIFY(m_replies->last.constFirst().writable);
        QCOMPARE(m_replies->last.constFirst().type, u"int"_s);
        QCOMPARE(value(u"numbers"_s), u"[250] 250"_s);
        QVERIFY(!m_replies->last.constFirst().writable);
        QCOMPARE(value(u"shape"_s), u"{...} -1"_s);
        QVERIFY(value(u"nothing"_s).startsWith(u"failed: "_s));
        QCOMPARE(value(u"calls"_s, IVariables::Hexadecimal), u"0x1 0"_s);
        QCOMPARE(value(u"calls"_s), u"1 0"_s);
        QCOMPARE(m_replies->numbers, (QList<quint64>{1, 2, 3, 4, 5, 6}));
    }

    void membersOfAClassAreOneList()
    {
        QCOMPARE(children(u"shape"_s).section(u' ', 0, 1), u"Base={...} corners=[3]"_s);
        QStringList names;
        for (const VariableInfo &info : m_replies->last)
            names.append(info.name);
        QCOMPARE(names, (QStringList{u"Base"_s, u"corners"_s, u"first"_s, u"flags"_s, u"weight"_s, u"hidden"_s}));
        QCOMPARE(children(u"shape"_s, 4, 1), u"weight=2.5 ..."_s);
        QCOMPARE(children(u"shape"_s, 5, 5), u"hidden=11"_s);
    }

    void membersHaveExpressionsOfTheirOwn()
    {
        children(u"shape"_s);
        const QString corners = m_replies->last.at(1).expression;
        const QString first = m_replies->last.at(2).expression;
        QVERIFY2(m_session->evaluate(corners).startsWith(u"{{x = 1, y = 2}"_s), qPrintable(corners));
        QCOMPARE(children(corners), u"[0]={...} [1]={...} [2]={...}"_s);
        QCOMPARE(children(m_replies->last.at(2).expression), u"x=5 y=6"_s);
        QCOMPARE(children(first), u"x=1 y=2"_s); // through the pointer
        QCOMPARE(children(corners + u"[1]"_s), u"x=3 y=4"_s);
    }

    void arraysAreReadInPortions()
    {
        QCOMPARE(children(u"numbers"_s, 0, 3), u"[0]=0 [1]=1 [2]=2 ..."_s);
        QCOMPARE(children(u"numbers"_s, 248, 100), u"[248]=248 [249]=249"_s);
        QCOMPARE(children(u"numbers"_s, 250, 100), QString());
        QCOMPARE(children(u"numbers"_s, 16, 2, IVariables::Hexadecimal), u"[16]=0x10 [17]=0x11 ..."_s);
    }

    void containersWithPrettyPrintersShowTheirElements()
    {
        QCOMPARE(m_session->evaluate(u"list"_s), u"std::vector of length 3, capacity 3 = {4, 5, 6}"_s);
        QVERIFY2(value(u"list"_s).endsWith(u" -1"_s), qPrintable(m_replies->answers.constLast()));
        QCOMPARE(children(u"list"_s), u"[0]=4 [1]=5 [2]=6"_s);
        QCOMPARE(children(u"list"_s, 1, 1), u"[1]=5 ..."_s);
        QVERIFY2(children(u"ages"_s).contains(u"\"anna\""_s), qPrintable(m_replies->answers.constLast()));
    }

    void scalarsHaveNoMembers()
    {
        QCOMPARE(children(u"calls"_s), QString());
        QVERIFY(children(u"nothing"_s).startsWith(u"failed: "_s));
    }

    void membersAreAssigned()
    {
        m_changed = true;
        children(u"shape"_s);
        const QString corners = m_replies->last.at(1).expression;
        children(corners);
        children(m_replies->last.at(1).expression);
        QCOMPARE(assign(m_replies->last.at(0).expression, u"77"_s), u"77 0"_s);
        QCOMPARE(m_session->evaluate(u"shape.corners[1].x"_s), u"77"_s);
        QCOMPARE(children(corners + u"[1]"_s), u"x=77 y=4"_s);
        QVERIFY(assign(u"calls"_s, u"nonsense"_s).startsWith(u"failed: "_s));
        QVERIFY(assign(u"shape"_s, u"1"_s).startsWith(u"failed: "_s));
    }

    void valuesFollowTheProgram()
    {
        m_changed = true;
        QCOMPARE(children(u"list"_s), u"[0]=4 [1]=5 [2]=6"_s);
        m_session->env->stepOver(Programs::source(u"tree.cpp"_s));
        QVERIFY(m_session->waitFor(Env::ProgramPaused));
        m_session->env->stepOver(Programs::source(u"tree.cpp"_s));
        QVERIFY(m_session->waitFor(Env::ProgramPaused));
        QVERIFY2(children(u"list"_s).startsWith(u"[0]=4 [1]=5 [2]=6 [3]="_s),
                 qPrintable(m_replies->answers.constLast()));
    }

    void valuesFollowAnAssignmentElsewhere()
    {
        m_changed = true;
        QCOMPARE(value(u"local"_s), u"1 0"_s);
        QCOMPARE(m_session->evaluate(u"local=7"_s), u"7"_s); // as by the window "Watches"
        QCOMPARE(value(u"local"_s), u"7 0"_s);
    }

    void askingDoesNotChangeTheProgram()
    {
        QVERIFY(value(u"touch()"_s).startsWith(u"failed: "_s));
        QCOMPARE(value(u"calls = 9"_s), u"failed: The expression could change the program."_s);
        QCOMPARE(children(u"touch()"_s), u"failed: The expression could change the program."_s);
        QCOMPARE(value(u"calls"_s), u"1 0"_s);
    }

    void variablesOfAFrameAreListed()
    {
        m_changed = true;
        QVERIFY2(scope(IVariables::Locals).contains(u"local=1"_s), qPrintable(m_replies->answers.constLast()));
        const auto count = m_replies->last.size();
        QCOMPARE(scope(IVariables::Arguments), QString());
        QCOMPARE(scope(IVariables::Locals, 0, 1).endsWith(u"..."_s), count > 1);
        QCOMPARE(scope(IVariables::Globals), u"failed: These variables cannot be listed."_s);
        m_session->env->stepInto(Programs::source(u"tree.cpp"_s));
        QVERIFY(m_session->waitFor(Env::ProgramPaused));
        QVERIFY(scope(IVariables::Arguments).startsWith(u"shape="_s));
        QCOMPARE(m_replies->last.size(), 3);
        QCOMPARE(value(u"local"_s, IVariables::Natural, {1, 1}), u"1 0"_s); // of the caller
        QVERIFY(value(u"local"_s).startsWith(u"failed: "_s));
    }

    void runningProgramHasNoAnswers()
    {
        m_changed = true;
        m_session->env->run();
        QVERIFY(m_session->waitFor(Env::ProgramFinished));
        QVERIFY(value(u"calls"_s).startsWith(u"failed: "_s));
        QVERIFY(children(u"shape"_s).startsWith(u"failed: "_s));
        QVERIFY(scope(IVariables::Locals).startsWith(u"failed: "_s));
    }

    void endOfTheSessionAnswersOpenQuestions()
    {
        m_changed = true;
        variables()->requestValue({1, 1}, {}, u"calls"_s, IVariables::Natural, m_replies.get());
        variables()->requestChildren({2, 1}, {}, u"shape"_s, 0, 9, IVariables::Natural, m_replies.get());
        m_session->env->stop();
        QCOMPARE(m_replies->answers.size(), 2);
    }

    void oddPortionsAreEmpty()
    {
        QCOMPARE(children(u"numbers"_s, -5, 1), u"[0]=0 ..."_s);
        QCOMPARE(children(u"shape"_s, 100, 5), QString());
        QCOMPARE(children(u"shape"_s, 0, -1), u" ..."_s);
    }
};

QTEST_MAIN(VariablesTest)
#include "tst_variables.moc"
