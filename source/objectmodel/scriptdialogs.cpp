#include "scriptdialogs.h"
#include "messages.h"
#include "questions.h"
#include "scriptapp.h"
#include "scripthost.h"
#include <algorithm>
#include <iterator>
using namespace Qt::StringLiterals;

namespace {
/// The numbers of buttons in scripts are positions in this table.
constexpr QMessageBox::StandardButton Buttons[] = {QMessageBox::NoButton, QMessageBox::Ok,    QMessageBox::Cancel,
                                                   QMessageBox::Yes,      QMessageBox::No,    QMessageBox::Abort,
                                                   QMessageBox::Retry,    QMessageBox::Ignore};

/// Other numbers are ignored; each box has at least one button.
QList<QMessageBox::StandardButton> buttonsOf(std::initializer_list<int> numbers)
{
    QList<QMessageBox::StandardButton> buttons;
    for (const int number : numbers) {
        if (number > 0 && number < int(std::size(Buttons)) && !buttons.contains(Buttons[number]))
            buttons.append(Buttons[number]);
    }
    return buttons.isEmpty() ? QList{QMessageBox::Ok} : buttons;
}

int messageBox(const ScriptApp &app, const QString &title, const QString &prompt, int first, int second, int third)
{
    const auto answer =
        showInformation(app.model().host().dialogParent(), prompt, buttonsOf({first, second, third}), title);
    return int(std::ranges::find(Buttons, answer) - Buttons);
}

py::object inputBox(const ScriptApp &app, const QString &title, const QString &prompt, const QString &text)
{
    const auto answer = askForText(app.model().host().dialogParent(), prompt, text, title);
    return answer ? py::cast(*answer) : py::none();
}

QString openFileDialog(const ScriptApp &app, const QString &prompt, const QString &path, const QString &filter)
{
    return askForOpenFile(app.model().host().dialogParent(), {u"openFileDialog"_s, prompt, path, filter});
}
} // namespace

void defineDialogMethods(py::class_<ScriptApp> &type)
{
    type.def("messageBox", messageBox, py::arg("dialogTitle"), py::arg("prompt"), py::arg("button1"),
             py::arg("button2") = 0, py::arg("button3") = 0, py::pos_only(),
             "messageBox(dialogTitle, prompt, button1, [button2], [button3]) - displays a message box with up to three "
             "buttons. Use mbOk, mbCancel, mbYes, mbNo, mbIgnore, mbAbort, mbRetry, mbNone for button values");
    type.def("inputBox", inputBox, py::arg("dialogTitle"), py::arg("prompt"), py::arg("defaultValue") = QString(),
             py::pos_only(),
             "inputBox(dialogTitle, prompt, [defaultValue]) - displays a dialog prompting the user to enter a string");
    type.def("openFileDialog", openFileDialog, py::arg("prompt"), py::arg("path") = QString(),
             py::arg("filter") = QString(), py::pos_only(),
             "openFileDialog(prompt, [path], [filter]) - displays a standard open file dialog");
}
