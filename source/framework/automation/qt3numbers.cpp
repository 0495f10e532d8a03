#include "qt3numbers.h"
#include <QObject>

using namespace Qt::StringLiterals;

namespace {
constexpr int UnknownKey = 0xffff;

struct ModifierBit
{
    int number;
    Qt::KeyboardModifier modifier;
};
constexpr ModifierBit ModifierBits[] = {{0x0100, Qt::ShiftModifier},
                                        {0x0200, Qt::ControlModifier},
                                        {0x0400, Qt::AltModifier},
                                        {0x0800, Qt::MetaModifier},
                                        {0x4000, Qt::KeypadModifier}};

constexpr int ButtonBits = Qt::LeftButton | Qt::RightButton | Qt::MiddleButton;
} // namespace

int Qt3Numbers::fromKey(int key)
{
    if (key == Qt::Key_unknown)
        return UnknownKey;
    return (key & ~0xff) == Qt::Key_Escape ? 0x1000 | (key & 0xff) : key;
}

int Qt3Numbers::toKey(int number)
{
    if (number == UnknownKey)
        return Qt::Key_unknown;
    return (number & ~0xff) == 0x1000 ? Qt::Key_Escape | (number & 0xff) : number;
}

int Qt3Numbers::fromState(Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers)
{
    int state = buttons.toInt() & ButtonBits;
    for (const ModifierBit &bit : ModifierBits) {
        if (modifiers & bit.modifier)
            state |= bit.number;
    }
    return state;
}

Qt::MouseButtons Qt3Numbers::toButtons(int state)
{
    return Qt::MouseButtons::fromInt(state & ButtonBits);
}

Qt::KeyboardModifiers Qt3Numbers::toModifiers(int state)
{
    Qt::KeyboardModifiers modifiers;
    for (const ModifierBit &bit : ModifierBits)
        modifiers.setFlag(bit.modifier, (state & (bit.number | int(bit.modifier))) != 0);
    return modifiers;
}

int Qt3Numbers::fromFocusReason(Qt::FocusReason reason)
{
    return std::min<int>(reason, 6); // version 3 has no reason for a menu bar, nor for no reason
}

Qt::FocusReason Qt3Numbers::toFocusReason(int number)
{
    return number >= 0 && number < 6 ? Qt::FocusReason(number) : Qt::OtherFocusReason;
}

int Qt3Numbers::fromMetaType(QMetaType type)
{
    if (type.flags() & QMetaType::IsEnumeration)
        return 16;
    switch (type.id()) {
    case QMetaType::QVariantMap:
        return 1;
    case QMetaType::QVariantList:
        return 2;
    case QMetaType::QString:
        return 3;
    case QMetaType::QStringList:
        return 4;
    case QMetaType::QFont:
        return 5;
    case QMetaType::QPixmap:
        return 6;
    case QMetaType::QBrush:
        return 7;
    case QMetaType::QRect:
        return 8;
    case QMetaType::QSize:
        return 9;
    case QMetaType::QColor:
        return 10;
    case QMetaType::QPalette:
        return 11;
    case QMetaType::QIcon:
        return 13;
    case QMetaType::QPoint:
        return 14;
    case QMetaType::QImage:
        return 15;
    case QMetaType::Int:
        return 16;
    case QMetaType::UInt:
        return 17;
    case QMetaType::Bool:
        return 18;
    case QMetaType::Double:
    case QMetaType::Float:
        return 19;
    case QMetaType::QPolygon:
        return 21;
    case QMetaType::QRegion:
        return 22;
    case QMetaType::QBitmap:
        return 23;
    case QMetaType::QCursor:
        return 24;
    case QMetaType::QSizePolicy:
        return 25;
    case QMetaType::QDate:
        return 26;
    case QMetaType::QTime:
        return 27;
    case QMetaType::QDateTime:
        return 28;
    case QMetaType::QByteArray:
        return 29;
    case QMetaType::QBitArray:
        return 30;
    case QMetaType::QKeySequence:
        return 31;
    case QMetaType::QPen:
        return 32;
    case QMetaType::LongLong:
        return 33;
    case QMetaType::ULongLong:
        return 34;
    default:
        return 0;
    }
}

QString Qt3Numbers::nameOf(const QObject *object)
{
    const QString name = object->objectName();
    return name.isEmpty() ? u"unnamed"_s : name;
}
