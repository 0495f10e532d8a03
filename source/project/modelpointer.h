#pragma once
#include <QExplicitlySharedDataPointer>

/// Base of the objects that a ModelPointer can point at. No pointer points at a new copy.
class ModelObject
{
public:
    ModelObject() = default;
    ModelObject(const ModelObject &) {}
    ModelObject &operator=(const ModelObject &) { return *this; } ///< pointers stay with their objects

protected:
    ~ModelObject()
    {
        if (m_life)
            m_life->ended = true;
    }

private:
    template <typename T>
    friend class ModelPointer;

    struct Life : QSharedData
    {
        bool ended = false;
    };
    QExplicitlySharedDataPointer<Life> m_life; ///< null until the first ModelPointer
};

/// What QPointer is for QObjects, for ProjectFolder, ProjectFile and ProjectProperties: becomes null when the object is
/// deleted.
template <typename T>
class ModelPointer
{
public:
    explicit ModelPointer(T *object) : m_target(object)
    {
        if (!object)
            return;
        ModelObject &model = modelObject(*object);
        if (!model.m_life)
            model.m_life = new ModelObject::Life;
        m_life = model.m_life;
    }
    [[nodiscard]] T *get() const { return m_life && !m_life->ended ? m_target : nullptr; }
    T *operator->() const { return get(); }
    explicit operator bool() const { return get(); }

private:
    /// A ProjectFile is represented by its properties, which are deleted with it: this keeps the size of a file small.
    static ModelObject &modelObject(T &object)
    {
        if constexpr (std::is_base_of_v<ModelObject, T>)
            return object;
        else
            return *object.properties();
    }

    T *m_target;
    QExplicitlySharedDataPointer<ModelObject::Life> m_life; ///< shared with the object
};
