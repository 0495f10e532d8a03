#include "optionsdialog.h"
#include "debugoptionspage.h"
#include "fixedpitch.h"
#include "messages.h"
#include "morepage.h"
#include "producttext.h"
#include "shortcutspage.h"
#include "toolsdialog.h"
#include "ui_optionsdialogbase.h"
#include <QColorDialog>
#include <QElapsedTimer>
#include <QFontDatabase>
#include <QPainter>
#include <QPointer>
#include <QSignalBlocker>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {
constexpr QSize ColourSize(40, 14); ///< pixels, of the colour on a button
constexpr int FontSlice = 50;       ///< milliseconds in which fonts are measured without a break

/// A font or size that is not among the choices is shown all the same, and stays until the user chooses another.
void showText(QComboBox *combo, const QString &text)
{
    combo->setPlaceholderText(text);
    combo->setCurrentIndex(combo->findText(text));
}

/// Names of sections and items of the formats, in the user's language.
QStringList shownNames(const QStringList &names)
{
    QStringList shown;
    for (const QString &name : names)
        shown.append(productText("TextFormats", name));
    return shown;
}

QString shownText(const QComboBox *combo)
{
    return combo->currentIndex() < 0 ? combo->placeholderText() : combo->currentText();
}

QWidget *lastInTabOrder(QWidget *page)
{
    QWidget *last = page;
    for (QWidget *widget = page->nextInFocusChain(); widget != page; widget = widget->nextInFocusChain()) {
        if (page->isAncestorOf(widget) && widget->focusPolicy() & Qt::TabFocus)
            last = widget;
    }
    return last;
}

/// With a frame, as the button may have the same colour.
QIcon colourIcon(const QColor &colour, const QColor &frame)
{
    QPixmap pixmap(ColourSize);
    pixmap.fill(colour);
    QPainter painter(&pixmap);
    painter.setPen(frame);
    painter.drawRect(0, 0, ColourSize.width() - 1, ColourSize.height() - 1);
    return pixmap;
}
} // namespace

OptionsDialog::OptionsDialog(const OptionValues &values, OptionChoices choices, QWidget *parent, const QString &name)
    : QDialog(parent)
    , m_ui(std::make_unique<Ui::OptionsDialogBase>())
    , m_choices(std::move(choices))
    , m_formats(values.formats)
{
    m_ui->setupUi(this);
    setObjectName(name);
    m_ui->OptionsTabs->setAccessibleName(windowTitle());
    setupFormatTab();
    loadEditorTab(values.editor);
    m_ui->DisableSplashCheck->setChecked(values.disableSplash);
    addPages(values);
    connect(m_ui->OKButton, &QPushButton::clicked, this, &OptionsDialog::accept);
    connect(m_ui->CancelButton, &QPushButton::clicked, this, &OptionsDialog::reject);
}

OptionsDialog::~OptionsDialog() = default;

void OptionsDialog::addPages(const OptionValues &values)
{
    m_toolsPage = new ToolsDialog(values.tools, this, u"toolsPage"_s);
    m_debugPage = new DebugOptionsPage(m_choices.debugTexts, values.debugActions, this, u"debugPage"_s);
    m_morePage = new MorePage(values.more, this, u"morePage"_s, m_choices.languages);
    m_shortcutsPage = new ShortcutsPage(values.shortcuts, m_choices.shortcuts, this, u"shortcutsPage"_s);
    const QList<QWidget *> pages{m_toolsPage, m_debugPage, m_morePage, m_shortcutsPage};
    for (QWidget *page : pages)
        m_ui->OptionsTabs->addTab(page, page->windowTitle());
    setTabOrder(lastInTabOrder(m_shortcutsPage),
                m_ui->OKButton); // the buttons come after the pages that were added last
    setTabOrder(m_ui->OKButton, m_ui->CancelButton);
}

void OptionsDialog::addPage(QWidget *page, const QString &title)
{
    m_ui->OptionsTabs->addTab(page, title);
}

void OptionsDialog::showPage(const QString &objectName)
{
    if (auto *page = findChild<QWidget *>(objectName))
        m_ui->OptionsTabs->setCurrentWidget(page);
}

OptionValues OptionsDialog::values() const
{
    return {.editor = editorOptions(),
            .disableSplash = m_ui->DisableSplashCheck->isChecked(),
            .formats = m_formats,
            .tools = m_toolsPage->tools(),
            .debugActions = m_debugPage->actions(),
            .more = m_morePage->options(),
            .shortcuts = m_shortcutsPage->options()};
}

void OptionsDialog::accept()
{
    if (!checkMorePage())
        return;
    applyTextFormat();
    m_toolsPage->apply();
    QDialog::accept();
}

/// False, after a message, if an option on the page cannot be used.
bool OptionsDialog::checkMorePage()
{
    const QString problem = m_morePage->problem();
    if (problem.isEmpty())
        return true;
    const QPointer<OptionsDialog> self(this);
    showWarning(this, problem);
    if (self) {
        m_ui->OptionsTabs->setCurrentWidget(m_morePage);
        m_morePage->showProblem();
    }
    return false;
}

void OptionsDialog::reject()
{
    m_toolsPage->revert();
    QDialog::reject();
}

// The tab "Editor" --------------------------------------------------------

void OptionsDialog::loadEditorTab(const EditorOptions &editor)
{
    (editor.mdi ? m_ui->MDIStyleRadio : m_ui->TabbedStyleRadio)->setChecked(true);
    m_ui->TabSizeSpin->setValue(editor.tabSize);
    (editor.keepTabs ? m_ui->KeepTabsRadio : m_ui->InsertSpacesRadio)->setChecked(true);
    QRadioButton *const modes[] = {m_ui->NoIndentRadio, m_ui->SimpleIndentRadio, m_ui->SmartIndentRadio};
    if (editor.indentMode >= 0 && editor.indentMode < int(std::size(modes)))
        modes[editor.indentMode]->setChecked(true);
}

EditorOptions OptionsDialog::editorOptions() const
{
    const int indentMode = m_ui->SmartIndentRadio->isChecked() ? 2 : m_ui->SimpleIndentRadio->isChecked() ? 1 : 0;
    return {.mdi = !m_ui->TabbedStyleRadio->isChecked(),
            .tabSize = m_ui->TabSizeSpin->value(),
            .keepTabs = m_ui->KeepTabsRadio->isChecked(),
            .indentMode = indentMode};
}

// The tab "Format" --------------------------------------------------------

void OptionsDialog::setupFormatTab()
{
    m_ui->SettingsCombo->addItems(shownNames(m_formats.sections()));
    fillFontCombo();
    for (const int size : QFontDatabase::standardSizes())
        m_ui->SizeCombo->addItem(QString::number(size));

    connect(m_ui->SettingsCombo, &QComboBox::activated, this, &OptionsDialog::formatSectionChanged);
    connect(m_ui->ItemList, &QListWidget::itemSelectionChanged, this, &OptionsDialog::formatItemChanged);
    connect(m_ui->FontCombo, &QComboBox::activated, this, &OptionsDialog::updateSampleText);
    connect(m_ui->SizeCombo, &QComboBox::activated, this, &OptionsDialog::updateSampleText);
    connect(m_ui->BoldCheckbox, &QCheckBox::stateChanged, this, &OptionsDialog::updateSampleText);
    connect(m_ui->ItalicCheckbox, &QCheckBox::stateChanged, this, &OptionsDialog::updateSampleText);
    connect(m_ui->ForegroundButton, &QPushButton::clicked, this, &OptionsDialog::selectForegroundColour);
    connect(m_ui->BackgroundButton, &QPushButton::clicked, this, &OptionsDialog::selectBackgroundColour);
    connect(m_ui->DefaultsButton, &QPushButton::clicked, this, &OptionsDialog::loadFormatDefaults);
    formatSectionChanged();
}

/// Adds the families from number @p first on. With many fonts it goes on when the events have been handled.
void OptionsDialog::fillFontCombo(qsizetype first)
{
    const QStringList families = QFontDatabase::families();
    QElapsedTimer timer;
    timer.start();
    for (qsizetype i = first; i < families.size(); ++i) {
        if (timer.hasExpired(FontSlice)) {
            QTimer::singleShot(0, this, [this, i] { fillFontCombo(i); });
            break;
        }
        if (isFixedPitch(families[i]))
            m_ui->FontCombo->addItem(families[i]);
    }
    if (m_ui->FontCombo->currentIndex() < 0)
        showText(m_ui->FontCombo, m_ui->FontCombo->placeholderText());
}

void OptionsDialog::formatSectionChanged()
{
    if (!m_currentSection.isEmpty())
        applyTextFormat();
    m_currentSection = m_formats.sections().value(m_ui->SettingsCombo->currentIndex());
    const QStringList items = m_formats.formats(m_currentSection);
    m_currentItem = items.value(0);
    {
        const QSignalBlocker quiet(m_ui->ItemList);
        m_ui->ItemList->clear();
        m_ui->ItemList->addItems(shownNames(items));
        m_ui->ItemList->setCurrentRow(0);
    }
    formatItemChanged();
}

void OptionsDialog::formatItemChanged()
{
    const QListWidgetItem *selected = m_ui->ItemList->selectedItems().value(0);
    if (!selected && !m_currentItem.isEmpty())
        return; // Ctrl and a click take the selection away: the item stays the current one, with its edits
    const QString item =
        selected ? m_formats.formats(m_currentSection).value(m_ui->ItemList->row(selected)) : QString();
    if (selected && item != m_currentItem) {
        applyTextFormat();
        m_currentItem = item;
    }
    m_foreground = m_formats.fgColour(m_currentSection, m_currentItem);
    const bool hasBackground = m_formats.hasBackground(m_currentSection, m_currentItem);
    const QString paper = hasBackground ? m_currentItem : m_formats.formats(m_currentSection).value(0);
    m_background = m_formats.bgColour(m_currentSection, paper); // an item without one of its own is painted on that
    const int size = m_formats.fontSize(m_currentSection, m_currentItem);
    showText(m_ui->FontCombo, m_formats.fontFamily(m_currentSection, m_currentItem));
    showText(m_ui->SizeCombo, size > 0 ? QString::number(size) : QString());
    m_ui->ItalicCheckbox->setChecked(m_formats.italic(m_currentSection, m_currentItem));
    m_ui->BoldCheckbox->setChecked(m_formats.bold(m_currentSection, m_currentItem));
    m_ui->BackgroundButton->setEnabled(hasBackground);
    updateColourButtons();
    updateSampleText();
}

/// The font belongs to the whole section, the other marks to one item.
void OptionsDialog::applyTextFormat()
{
    for (const QString &item : m_formats.formats(m_currentSection)) {
        m_formats.setFontFamily(m_currentSection, item, shownText(m_ui->FontCombo));
        m_formats.setFontSize(m_currentSection, item, shownText(m_ui->SizeCombo).toInt());
    }
    m_formats.setItalic(m_currentSection, m_currentItem, m_ui->ItalicCheckbox->isChecked());
    m_formats.setBold(m_currentSection, m_currentItem, m_ui->BoldCheckbox->isChecked());
    m_formats.setFgColour(m_currentSection, m_currentItem, m_foreground);
    if (m_formats.hasBackground(m_currentSection, m_currentItem))
        m_formats.setBgColour(m_currentSection, m_currentItem, m_background);
}

void OptionsDialog::updateSampleText()
{
    QFont font(shownText(m_ui->FontCombo));
    if (const int size = shownText(m_ui->SizeCombo).toInt(); size > 0)
        font.setPointSize(std::min(size, QFontDatabase::standardSizes().last()));
    font.setWeight(m_ui->BoldCheckbox->isChecked() ? QFont::Bold : QFont::Normal);
    font.setItalic(m_ui->ItalicCheckbox->isChecked());
    m_ui->SampleLabel->setFont(font);
    QPalette colours = m_ui->SampleLabel->palette();
    colours.setColor(QPalette::WindowText, m_foreground);
    colours.setColor(QPalette::Window, m_background);
    m_ui->SampleLabel->setPalette(colours);
}

void OptionsDialog::updateColourButtons()
{
    const QColor frame = palette().color(QPalette::Mid);
    m_ui->ForegroundButton->setIcon(colourIcon(m_foreground, frame));
    m_ui->BackgroundButton->setIcon(colourIcon(m_background, frame));
}

void OptionsDialog::selectForegroundColour()
{
    selectColour(m_foreground);
}

void OptionsDialog::selectBackgroundColour()
{
    selectColour(m_background);
}

/// The dialog is the toolkit's own everywhere, so that automation finds it by name.
void OptionsDialog::selectColour(QColor &colour)
{
    QColorDialog dialog(colour, this);
    dialog.setObjectName(u"colorDialog"_s);
    dialog.setOption(QColorDialog::DontUseNativeDialog);
    if (dialog.exec() == QDialog::Rejected || !dialog.selectedColor().isValid())
        return;
    colour = dialog.selectedColor();
    updateColourButtons();
    updateSampleText();
}

void OptionsDialog::loadFormatDefaults()
{
    const TextFormats defaults = m_choices.defaultFormats();
    if (defaults.sections().isEmpty()) {
        showWarning(this, tr("The default formats cannot be read. The formats stay as they are."));
        return;
    }
    m_formats = defaults;
    const QString section = m_currentSection;
    m_ui->SettingsCombo->clear();
    m_ui->SettingsCombo->addItems(shownNames(m_formats.sections()));
    m_ui->SettingsCombo->setCurrentIndex(std::max(0, int(m_formats.sections().indexOf(section))));
    m_currentSection.clear();
    formatSectionChanged();
}
