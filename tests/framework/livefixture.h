#pragma once
#include "../project/modeltext.h"
#include "activity.h"
#include "liveenvironment.h"
#include "project.h"
#include "projectworkspace.h"
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

/// A workspace with two projects, "one" and "two", and their processors, which run.
class LiveFixture
{
protected:
    void setUp()
    {
        QTest::failOnWarning(QRegularExpression(QStringLiteral("^(?!This plugin does not support)")));
        m_one = InterfacePtr<LiveProcessor>(new LiveProcessor);
        m_two = InterfacePtr<LiveProcessor>(new LiveProcessor);
        m_one->values = {{QStringLiteral("counter"), QStringLiteral("1")},
                         {QStringLiteral("flag"), QStringLiteral("true")}};
        m_two->values = {{QStringLiteral("counter"), QStringLiteral("200")}};
        m_directory = std::make_unique<QTemporaryDir>();
        m_activity = std::make_unique<Activity>();
        openWorkspace();
    }
    void openWorkspace()
    {
        m_activity->openWorkspace(std::make_unique<ProjectWorkspace>(m_directory->filePath(QStringLiteral("all.vnw"))));
        m_projectOne = addProject(QStringLiteral("one"), m_one.get());
        m_projectTwo = addProject(QStringLiteral("two"), m_two.get());
        m_activity->workspace()->setCurrentProject(0);
    }
    void tearDown()
    {
        if (m_activity->workspace())
            m_activity->closeWorkspace();
        m_activity.reset();
        m_one.reset();
        m_two.reset();
    }
    [[nodiscard]] Project *addProject(const QString &name, IExecutionEnvironment *environment) const
    {
        const QString file = m_directory->filePath(name + QStringLiteral(".vnp"));
        writeFile(file, "<project/>");
        auto *project = new Project({}, {});
        QTEST_ASSERT(project->load(file));
        project->setExecutionEnvironment(environment);
        m_activity->workspace()->addProject(project);
        return project;
    }

    InterfacePtr<LiveProcessor> m_one;
    InterfacePtr<LiveProcessor> m_two;
    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<Activity> m_activity;
    Project *m_projectOne = nullptr;
    Project *m_projectTwo = nullptr;
};
