#pragma once
#include "unknown.h"
#include <QString>

/// Optional interface of either environment: the options of projects and files that the user can edit.
class IPropertyDefinitions : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0x5a1f0c52, 0x6c1e, 0x4f43, 0x9d, 0x3b, 0x0e, 0x5a, 0x7c, 0x1b, 0x9f, 0x10};

    /// An XML document whose root element, of any name, contains "group" elements; these contain "propertygroup"
    /// elements (the pages), and these contain "property" elements: options with the attributes "key", "name", "type"
    /// and "defaultvalue". The types are "text", "integer", "file", "directory", "list", "integercombo", "textcombo",
    /// "boolean", "filelist" and "directorylist". The choices of a "list", and the proposals of the combos, are
    /// "option" elements in the property: the attribute "key" is stored, the text is shown. Example:
    /// `<properties><group name="Assembler"><propertygroup name="Code"><appliesto selector="project"/>
    /// <property key="asmLevel" name="Instruction set" type="list" defaultvalue="base">
    /// <description>The instructions that may be used.</description>
    /// <option key="base">Base set</option><option key="full">Full set</option>
    /// </property></propertygroup></group></properties>`
    /// Values are read and written through IProjectProperties; a default is not stored. Called each time the property
    /// editor opens, and before a build that needs the default of "buildMatch". An empty text means no options.
    virtual QString propertyDefinitions() = 0;

protected:
    ~IPropertyDefinitions() = default;
};
