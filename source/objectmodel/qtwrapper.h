#pragma once
#include "pythonreference.h"
#include "scriptnames.h"
#include "signalsink.h"
#include <map>
#include <memory>
#include <QPointer>

/// An object of the toolkit as scripts see it: its public slots are methods, its properties and named children are
/// attributes, and a handler can be set for each of its signals.
///
/// Functions that return Python objects raise a Python exception (py::error_already_set) on failure.
class QtWrapper : public QObject, public ISignalHandler
{
    Q_OBJECT
public:
    /// The wrapper of @p object. If there is none yet, creates it; with @p owned it deletes the object at its end.
    ///
    /// A wrapper stays when its object is deleted, for an object at the same address as well.
    static QtWrapper *get(QObject *object, bool owned);
    /// The wrapper of a Python object; null for one of another type and for one whose wrapper was deleted.
    static QtWrapper *of(_object *pythonObject);
    static void deleteAll(); ///< At the end, when the objects of the window still exist.
    [[nodiscard]] static qsizetype count();

    [[nodiscard]] PythonReference pythonObject() const;
    [[nodiscard]] QObject *object() const { return m_target; } ///< Null if it was deleted.
    [[nodiscard]] QString text() const;                        ///< For the console.

    [[nodiscard]] PythonReference attribute(const QString &name) const;
    void setAttribute(const QString &name, _object *value);
    [[nodiscard]] PythonReference callSlot(const QString &name,
                                           _object *arguments) const; ///< The first one is the object.
    [[nodiscard]] QStringList attributeNames() const;

private Q_SLOTS:
    void objectDestroyed();

private:
    QtWrapper(QObject *target, bool owned);
    ~QtWrapper() override;

    void signal(int id, void **args) override;
    [[nodiscard]] PythonReference handlerArguments(int id, void **args) const;
    [[nodiscard]] PythonReference member(const QString &name) const;
    [[nodiscard]] QObject *child(const QString &name) const;
    [[nodiscard]] PythonReference children() const;
    void writeProperty(int index, _object *value);
    void setHandler(int id, _object *callable);

    QPointer<QObject> m_target;
    const bool m_owned;
    const QMetaObject *const m_meta; ///< of the target, also while its destructors run
    const ScriptNames m_names;
    const PythonReference m_pythonObject;
    std::map<int, PythonReference> m_handlers; ///< by the number of the signal
    std::unique_ptr<SignalSink> m_sink;
};
