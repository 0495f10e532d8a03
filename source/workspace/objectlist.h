#pragma once
#include <QList>
#include <QPointer>

/// A list of objects that live elsewhere.
template <typename T>
class ObjectList : public QList<T *>
{
public:
    using QList<T *>::QList;

    /// The position of @p object, which may already be in its destruction, or -1.
    [[nodiscard]] int find(const QObject *object) const
    {
        for (int i = 0; i < this->size(); ++i) {
            if (static_cast<const QObject *>(this->at(i)) == object)
                return i;
        }
        return -1;
    }

    /// The same objects in the same order, for loops in which some of them may die.
    [[nodiscard]] QList<QPointer<T>> guarded() const { return {this->cbegin(), this->cend()}; }
};
