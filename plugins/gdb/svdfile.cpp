#include "svdfile.h"
#include <algorithm>
#include <QCoreApplication>
#include <QMap>
#include <QSet>
#include <QXmlStreamReader>

using namespace Qt::StringLiterals;

namespace {
constexpr int DeepestLevel = 24;
constexpr int MostElements = 2'000'000;
constexpr int LongestArray = 4096;
constexpr int MostRegisters = 200'000;
constexpr int MostDerivations = 16;

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(SvdFile)
};

/// An XML element with its text and children. Derived elements are completed in the tree before registers are read.
struct Element
{
    QString tag;
    QString text;
    QString derivedFrom;
    QList<Element> children;

    [[nodiscard]] const Element *child(QStringView wanted) const
    {
        for (const Element &element : children) {
            if (element.tag == wanted)
                return &element;
        }
        return nullptr;
    }
    [[nodiscard]] QString textOf(QStringView wanted, const QString &fallback = {}) const
    {
        const Element *element = child(wanted);
        return element ? element->text : fallback;
    }
    [[nodiscard]] QString name() const { return textOf(u"name"); }
};

class Reader
{
public:
    explicit Reader(const QByteArray &contents) : m_xml(contents) {}

    bool read(Element *root, QString *error)
    {
        if (m_xml.readNextStartElement())
            readElement(root, 0);
        if (!m_xml.hasError() && root->tag == u"device")
            return true;
        *error = m_xml.hasError()
                     ? Text::tr("line %1: %2").arg(QString::number(m_xml.lineNumber()), m_xml.errorString())
                     : Text::tr("it does not describe a device");
        return false;
    }

private:
    void readElement(Element *element, int level)
    {
        element->tag = m_xml.name().toString();
        element->derivedFrom = m_xml.attributes().value("derivedFrom"_L1).toString();
        if (level > DeepestLevel || ++m_count > MostElements)
            m_xml.raiseError(Text::tr("too much in it"));
        while (!m_xml.atEnd() && !m_xml.hasError()) {
            m_xml.readNext();
            if (m_xml.isEndElement())
                break;
            if (m_xml.isCharacters())
                element->text += m_xml.text();
            if (!m_xml.isStartElement())
                continue;
            element->children.append(Element());
            readElement(&element->children.last(), level + 1);
        }
        element->text = element->text.simplified();
    }

    QXmlStreamReader m_xml;
    int m_count = 0;
};

/// "0x1F", "31", "#11111", with a suffix K, M, G or T for powers of 1024. Returns the fallback for invalid texts.
quint64 number(QString text, quint64 fallback = 0)
{
    static const QMap<QChar, int> shifts = {{u'K', 10}, {u'M', 20}, {u'G', 30}, {u'T', 40}};
    text = text.trimmed();
    int shift = 0;
    if (!text.isEmpty() && !text.startsWith("0x"_L1, Qt::CaseInsensitive))
        shift = shifts.value(text.back().toUpper());
    if (shift)
        text.chop(1);
    bool valid = false;
    quint64 value = 0;
    if (text.startsWith(u'#'))
        value = text.mid(1).replace(u'x', u'0').toULongLong(&valid, 2);
    else if (text.startsWith("0b"_L1, Qt::CaseInsensitive))
        value = text.mid(2).replace(u'x', u'0').toULongLong(&valid, 2);
    else if (text.startsWith("0x"_L1, Qt::CaseInsensitive))
        value = text.mid(2).toULongLong(&valid, 16);
    else
        value = text.toULongLong(&valid, 10);
    return valid ? value << shift : fallback;
}

// Derivation ----------------------------------------------------------------------------------------------------------

/// Resolves the attribute derivedFrom: the name of a sibling, or a path that starts at the peripherals.
class Derivation
{
public:
    explicit Derivation(const Element &device)
    {
        if (const Element *peripherals = device.child(u"peripherals"))
            m_peripherals = *peripherals;
    }

    void resolve(Element *element, const Element &siblings, int depth)
    {
        if (!element->derivedFrom.isEmpty() && depth < MostDerivations) {
            if (const Element *base = find(element->derivedFrom, siblings); base && base->name() != element->name()) {
                Element source = *base;
                resolve(&source, siblings, depth + 1);
                inherit(source, element);
            }
        }
        element->derivedFrom.clear();
        const Element before = *element;
        for (Element &child : element->children) {
            if (!child.children.isEmpty())
                resolve(&child, before, depth);
        }
    }

private:
    static const Element *named(const Element &parent, const QString &name)
    {
        for (const Element &child : parent.children) {
            if (child.name() == name)
                return &child;
            if (child.tag == u"registers" || child.tag == u"fields") {
                if (const Element *found = named(child, name))
                    return found;
            }
        }
        return nullptr;
    }

    const Element *find(const QString &path, const Element &siblings) const
    {
        if (const Element *sibling = named(siblings, path))
            return sibling;
        const Element *place = &m_peripherals;
        for (const QString &step : path.split(u'.')) {
            place = named(*place, step);
            if (!place)
                return nullptr;
        }
        return place;
    }

    /// Copies missing children. Lists of registers and fields are merged by name.
    static void inherit(const Element &base, Element *element)
    {
        QSet<QString> given;
        for (const Element &child : std::as_const(element->children))
            given.insert(child.tag);
        for (const Element &child : base.children) {
            if (!given.contains(child.tag)) {
                element->children.append(child);
            } else if (child.tag == u"registers" || child.tag == u"fields") {
                joinLists(child, element);
            }
        }
    }

    static void joinLists(const Element &list, Element *element)
    {
        for (Element &own : element->children) {
            if (own.tag != list.tag)
                continue;
            for (const Element &entry : list.children) {
                if (!named(own, entry.name()))
                    own.children.append(entry);
            }
        }
    }

    Element m_peripherals;
};

// Expansion -----------------------------------------------------------------------------------------------------------

/// Settings that registers inherit from their parents; the nearest one has priority.
struct Defaults
{
    QString size = u"32"_s;
    QString access = u"read-write"_s;

    [[nodiscard]] Defaults in(const Element &element) const
    {
        return {element.textOf(u"size", size), element.textOf(u"access", access)};
    }
};

/// One element of an array.
struct Copy
{
    QString name;
    quint64 offset = 0;
};

QStringList arrayIndices(const QString &text, int count)
{
    QStringList indices = text.split(u',', Qt::SkipEmptyParts);
    const QStringList range = text.split(u'-');
    if (indices.size() == 1 && range.size() == 2) {
        indices.clear();
        bool digits = false;
        const int first = range[0].trimmed().toInt(&digits);
        const QChar letter = range[0].trimmed().isEmpty() ? QChar(u'A') : range[0].trimmed().front();
        for (int i = 0; i < count; ++i)
            indices.append(digits ? QString::number(first + i) : QString(QChar(char16_t(letter.unicode() + i))));
    }
    for (int i = int(indices.size()); i < count; ++i)
        indices.append(QString::number(i));
    return indices;
}

QList<Copy> copies(const Element &element)
{
    const QString name = element.name();
    const int count = int(std::min<quint64>(number(element.textOf(u"dim")), LongestArray));
    if (count == 0)
        return {{name, 0}};
    const quint64 step = number(element.textOf(u"dimIncrement"));
    const QStringList indices = arrayIndices(element.textOf(u"dimIndex"), count);
    QList<Copy> list;
    for (int i = 0; i < count; ++i)
        list.append({QString(name).replace("%s"_L1, indices[i].trimmed()), step * quint64(i)});
    return list;
}

void readRange(const Element &element, SvdField *field)
{
    const QString range = element.textOf(u"bitRange");
    quint64 low = number(element.textOf(u"bitOffset", element.textOf(u"lsb")));
    quint64 high = low + number(element.textOf(u"bitWidth"), 1) - 1;
    if (element.child(u"msb"))
        high = number(element.textOf(u"msb"));
    if (const qsizetype colon = range.indexOf(u':'); range.startsWith(u'[') && colon > 0) {
        high = number(range.mid(1, colon - 1));
        low = number(range.mid(colon + 1).remove(u']'));
    }
    field->lowBit = int(std::min<quint64>(low, 63));
    field->width = int(std::clamp<quint64>(high >= low ? high - low + 1 : 1, 1, 64 - quint64(field->lowBit)));
}

bool isReadable(const QString &access)
{
    return !access.startsWith("write"_L1);
}

bool isWritable(const QString &access)
{
    return access != u"read-only";
}

/// @p access is that of the register.
QList<SvdField> readFields(const Element &element, const QString &access)
{
    QList<SvdField> fields;
    const Element *list = element.child(u"fields");
    for (const Element &entry : list ? list->children : QList<Element>()) {
        SvdField field;
        field.description = entry.textOf(u"description");
        field.readable = isReadable(entry.textOf(u"access", access));
        field.writable = isWritable(entry.textOf(u"access", access));
        readRange(entry, &field);
        if (const Element *values = entry.child(u"enumeratedValues")) {
            for (const Element &value : values->children) {
                if (value.tag == u"enumeratedValue" && value.child(u"value"))
                    field.names.append({number(value.textOf(u"value")), value.name()});
            }
        }
        const int lowBit = field.lowBit;
        for (const Copy &copy : copies(entry)) {
            field.name = copy.name;
            field.lowBit = int(std::min<quint64>(quint64(lowBit) + copy.offset, 63));
            fields.append(field);
        }
    }
    return fields;
}

/// The width of an access in bits: the size rounded up to a width of the bus.
int accessWidth(quint64 size)
{
    return size <= 8 ? 8 : size <= 16 ? 16 : 32;
}

SvdRegister readRegister(const Element &element, const Defaults &defaults)
{
    SvdRegister result;
    const QString access = defaults.access;
    result.description = element.textOf(u"description");
    result.width = accessWidth(number(defaults.size, 32));
    result.readable = isReadable(access);
    result.writable = isWritable(access);
    result.readingChanges = element.child(u"readAction") != nullptr;
    result.onesClear = element.textOf(u"modifiedWriteValues") == u"oneToClear";
    result.fields = readFields(element, access);
    if (const Element *list = element.child(u"fields")) {
        for (const Element &field : list->children)
            result.readingChanges = result.readingChanges || field.child(u"readAction");
    }
    return result;
}

void readRegisters(const Element &parent, const Defaults &defaults, const QString &prefix, quint64 base,
                   SvdPeripheral *result)
{
    for (const Element &element : parent.children) {
        const bool cluster = element.tag == u"cluster";
        if (!cluster && element.tag != u"register")
            continue;
        const Defaults own = defaults.in(element);
        const quint64 offset = base + number(element.textOf(u"addressOffset"));
        SvdRegister entry = cluster ? SvdRegister() : readRegister(element, own);
        for (const Copy &copy : copies(element)) {
            if (result->registers.size() > MostRegisters)
                return; // one more than allowed: readSvd() refuses the file
            if (cluster) {
                readRegisters(element, own, prefix + copy.name + u'.', offset + copy.offset, result);
                continue;
            }
            entry.name = prefix + copy.name;
            entry.address = offset + copy.offset;
            result->registers.append(entry);
        }
    }
}

/// Adds to @p count the number of registers, and ends when there are too many.
void readPeripheral(const Element &element, const Defaults &defaults, QList<SvdPeripheral> *peripherals,
                    qsizetype *count)
{
    const Element *registers = element.child(u"registers");
    for (const Copy &copy : copies(element)) {
        if (*count > MostRegisters)
            return;
        SvdPeripheral peripheral;
        peripheral.name = copy.name;
        peripheral.description = element.textOf(u"description");
        peripheral.address = number(element.textOf(u"baseAddress")) + copy.offset;
        if (registers)
            readRegisters(*registers, defaults.in(element), {}, peripheral.address, &peripheral);
        std::stable_sort(peripheral.registers.begin(), peripheral.registers.end(),
                         [](const auto &left, const auto &right) { return left.address < right.address; });
        *count += peripheral.registers.size();
        peripherals->append(peripheral);
    }
}
} // namespace

bool readSvd(const QByteArray &contents, QList<SvdPeripheral> *peripherals, QString *error)
{
    Element device;
    if (!Reader(contents).read(&device, error))
        return false;
    const Element *list = device.child(u"peripherals");
    Derivation derivation(device);
    qsizetype registers = 0;
    for (Element element : list ? list->children : QList<Element>()) {
        derivation.resolve(&element, *list, 0);
        readPeripheral(element, Defaults().in(device), peripherals, &registers);
        if (registers > MostRegisters) {
            *error = Text::tr("it describes too many registers");
            peripherals->clear();
            return false;
        }
    }
    return true;
}
