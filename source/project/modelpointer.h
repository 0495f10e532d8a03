#pragma once
#include <QtGlobal>

/// The untyped half of ModelPointer.
class ModelPointerBase
{
public:
    Q_DISABLE_COPY_MOVE(ModelPointerBase)
    /// For the destructors of the model: turns all pointers to @p object null.
    static void objectDeleted(const void *object);

protected:
    explicit ModelPointerBase(const void *object);
    ~ModelPointerBase();
    [[nodiscard]] bool isAlive() const { return m_object; }

private:
    const void *m_object;
};

/// What QPointer is for QObjects, for ProjectFolder, ProjectFile and ProjectProperties: turns null when the object is
/// deleted. An object that nobody points at pays nothing for it.
template <typename T>
class ModelPointer : private ModelPointerBase
{
public:
    explicit ModelPointer(T *object) : ModelPointerBase(object), m_target(object) {}
    [[nodiscard]] T *get() const { return isAlive() ? m_target : nullptr; }
    T *operator->() const { return get(); }
    explicit operator bool() const { return isAlive(); }

private:
    T *m_target;
};
