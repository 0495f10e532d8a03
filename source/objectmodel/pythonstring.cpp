#include "pythonstring.h"
#include <Python.h>

QString fromPython(_object *text)
{
    const void *data = PyUnicode_DATA(text);
    const Py_ssize_t length = PyUnicode_GET_LENGTH(text);
    switch (PyUnicode_KIND(text)) {
    case PyUnicode_1BYTE_KIND:
        return QString::fromLatin1(static_cast<const char *>(data), length);
    case PyUnicode_2BYTE_KIND:
        return QString(static_cast<const QChar *>(data), length);
    default:
        return QString::fromUcs4(static_cast<const char32_t *>(data), length);
    }
}

PythonReference toPython(const QString &text)
{
    int byteOrder = QSysInfo::ByteOrder == QSysInfo::LittleEndian ? -1 : 1;
    return PythonReference(PyUnicode_DecodeUTF16(reinterpret_cast<const char *>(text.utf16()),
                                                 text.size() * qsizetype(sizeof(QChar)), "surrogatepass", &byteOrder));
}
