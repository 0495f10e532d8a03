#pragma once
#include <QList>
#include <QPointer>

/// A list of objects that it does not own.
template <typename T>
class ObjectList : public QList<T *>
{
public:
    using QList<T *>::QList;

    /// The index of @p object, which may be under destruction, or -1.
    [[nodiscard]] int find(const QObject *object) const
    {
        for (int i = 0; i < this->size(); ++i) {
            if (static_cast<const QObject *>(this->at(i)) == object)
                return i;
        }
        return -1;
    }

    /// The same objects in the same order, for loops that may delete some of them.
    [[nodiscard]] QList<QPointer<T>> guarded() const { return {this->cbegin(), this->cend()}; }
};
