#pragma once
#include "document.h"
#include "idisassembly.h"
#include "idisassemblyaddress.h"
#include "idisassemblyfetch.h"
#include "linesource.h"
#include <optional>

/// The instructions that an execution environment has in its first region of memory, a paragraph for each address: the
/// source lines of an address, if there are any, and the instruction. An address without an instruction has no lines.
///
/// The rest of the program names an address by a line, see lineOfAddress().
class DisassemblerDocument : public Document, public IParaSource
{
    Q_OBJECT
public:
    explicit DisassemblerDocument(DocumentTemplate *docTemplate);
    ~DisassemblerDocument() override;

    /// @p filename is what disassemblyName() gives. The document is empty if the environment was deleted or has no
    /// memory.
    bool open(const QString &filename) override;
    bool create(const QString &filename) override;
    bool save() override;
    bool saveAs(const QString &filename) override;
    [[nodiscard]] QDateTime lastModified() override;
    [[nodiscard]] QString filename() override { return m_filename; }
    [[nodiscard]] QString title() override;

    [[nodiscard]] QStringList para(int index) override;
    [[nodiscard]] int paraCount() override { return m_region.count; }
    bool fetch(int index, int milliseconds) override;

    /// Asks the environment for its first region of memory again: another session can have another one. A plug-in that
    /// is asked may delete the document.
    void refreshRegion();
    /// The start of the names of the objects of a view, without blanks and full stops.
    [[nodiscard]] QString objectNames() const;
    [[nodiscard]] int lineOf(int para) const; ///< as the rest of the program names it
    /// The paragraph of such a line, or of an address; -1 if it is not shown here.
    [[nodiscard]] int paraOf(int line) const;
    /// The upper half of an address may be left out.
    [[nodiscard]] int paraOfAddress(quint64 address) const;
    /// The address that a user's text means: a symbol, a symbol plus a number, or a number in hexadecimal digits.
    [[nodiscard]] std::optional<quint64> addressOf(const QString &text) const;

Q_SIGNALS:
    /// What was paragraph n is paragraph n + @p distance now, if it is still in the region.
    void regionChanged(qint64 distance);

private:
    struct Region
    {
        uint lowAddress = 0;
        int count = 0;                     ///< of addresses
        std::optional<uint> upperHalf = 0; ///< of whole addresses, if it is known

        bool operator==(const Region &) const = default;
    };
    [[nodiscard]] static std::optional<Region> readRegion(QUnknownInterface *environment);

    QString m_filename;
    QString m_name; ///< of the processor
    uint m_key = 0; ///< of the environment
    Region m_region;
    InterfacePtr<IDisassembly> m_disassembly;
    InterfacePtr<IDisassemblyAddress> m_address;
    InterfacePtr<IDisassemblyFetch> m_fetch;
};
