// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/desktop_host.h"

#include <QApplication>
#include <QDate>
#include <QFileDialog>
#include <QFileInfo>
#include <QMainWindow>
#include <QMessageBox>
#include <QSettings>
#include <QStandardPaths>
#include <QTime>
#include <algorithm>
#include <array>
#include <vector>

#include "screens/desk.h"
#include "screens/help_viewer.h"
#include "screens/screen.h"

namespace lobemax::screens {

namespace {

struct Button_Pair {
    Answer answer;
    QMessageBox::StandardButton button;
};

constexpr std::array button_pairs{
    Button_Pair{Answer::OK, QMessageBox::Ok},         Button_Pair{Answer::Cancel, QMessageBox::Cancel},
    Button_Pair{Answer::Abort, QMessageBox::Abort},   Button_Pair{Answer::Retry, QMessageBox::Retry},
    Button_Pair{Answer::Ignore, QMessageBox::Ignore}, Button_Pair{Answer::Yes, QMessageBox::Yes},
    Button_Pair{Answer::No, QMessageBox::No},
};

QMessageBox::Icon Icon_Of(Symbol symbol)
{
    switch (symbol) {
    case Symbol::information:
        return QMessageBox::Information;
    case Symbol::exclamation:
        return QMessageBox::Warning;
    case Symbol::stop:
        return QMessageBox::Critical;
    case Symbol::none:
        break;
    }
    return QMessageBox::NoIcon;
}

/// The answer that the close box and Escape give: Cancel, No, or the usual one.
Answer Escape_Answer(Buttons buttons)
{
    for (const Answer answer : {Answer::Cancel, Answer::No})
        if (Offers(buttons, answer))
            return answer;
    return Usual_Answer(buttons);
}

/// The window that a box or a dialog stands over: the screen at work, not the help beside it.
QWidget* Screen_at_Work()
{
    if (QWidget* const modal = QApplication::activeModalWidget())
        return modal;
    QWidget* const active = QApplication::activeWindow();
    if (active != nullptr && dynamic_cast<Help_Viewer*>(active) == nullptr)
        return active;
    for (QWidget* const window : QApplication::topLevelWidgets())
        if (qobject_cast<QMainWindow*>(window) != nullptr && window->isVisible())
            return window;
    return nullptr;
}

Answer Ask(const Message& message)
{
    QMessageBox box(Icon_Of(message.symbol),
                    To_Qt(message.title.empty() ? std::string(design.identity.Program_Name) : message.title),
                    To_Qt(message.text), QMessageBox::NoButton, Screen_at_Work());
    box.setTextFormat(Qt::PlainText);
    box.setTextInteractionFlags(Qt::TextSelectableByMouse);
    for (const auto& [answer, button] : button_pairs) {
        if (!Offers(message.buttons, answer))
            continue;
        box.addButton(button);
        if (answer == message.default_answer)
            box.setDefaultButton(button);
        if (answer == Escape_Answer(message.buttons))
            box.setEscapeButton(button);
    }
    const int pressed = Run_Modal(box);
    const auto found = std::find_if(button_pairs.begin(), button_pairs.end(),
                                    [&](const Button_Pair& pair) { return static_cast<int>(pair.button) == pressed; });
    return found == button_pairs.end() ? Escape_Answer(message.buttons) : found->answer;
}

/// The folder where the user last opened or saved something, else that of the documents.
QString Last_Folder()
{
    const QString kept = QSettings().value(QStringLiteral("folder")).toString();
    return QFileInfo(kept).isDir() ? kept : QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
}

std::optional<std::string> Chosen(const QString& path)
{
    if (path.isEmpty())
        return std::nullopt;
    QSettings().setValue(QStringLiteral("folder"), QFileInfo(path).absolutePath());
    return From_Qt(path);
}

/// The filter of a dialog's index, counted from 1.
QString Filter_at(const QString& filters, int index)
{
    const QStringList list = filters.split(QStringLiteral(";;"));
    return list.value(std::clamp<int>(index - 1, 0, static_cast<int>(list.size()) - 1));
}

/// The extension of a filter's first pattern: "*.cam" gives "cam"; "*.*" gives none.
QString Extension_of(const QString& filter)
{
    const qsizetype star = filter.indexOf(QStringLiteral("*."));
    if (star < 0)
        return {};
    qsizetype end = star + 2;
    while (end < filter.size() && filter[end].isLetterOrNumber())
        ++end;
    return filter.mid(star + 2, end - star - 2);
}

std::optional<std::string> Open_File(const File_Dialog& dialog)
{
    QFileDialog box(Screen_at_Work(), To_Qt(dialog.title));
    box.setFileMode(QFileDialog::ExistingFile);
    box.setDirectory(Last_Folder());
    const QString filters = To_Qt(Qt_Filter(dialog.filter));
    box.setNameFilter(filters);
    box.selectNameFilter(Filter_at(filters, dialog.filter_index));
    if (Run_Modal(box) != QDialog::Accepted || box.selectedFiles().isEmpty())
        return std::nullopt;
    return Chosen(box.selectedFiles().constFirst());
}

std::optional<std::string> Save_File(const File_Dialog& dialog)
{
    QFileDialog box(Screen_at_Work(), To_Qt(dialog.title));
    box.setAcceptMode(QFileDialog::AcceptSave);
    box.setDirectory(Last_Folder());
    const QString filters = To_Qt(Qt_Filter(dialog.filter));
    box.setNameFilter(filters);
    const QString first = Filter_at(filters, dialog.filter_index);
    // A name typed without an extension gets that of the filter in force, before the dialog asks about an older file.
    QObject::connect(&box, &QFileDialog::filterSelected, &box,
                     [&box](const QString& filter) { box.setDefaultSuffix(Extension_of(filter)); });
    box.selectNameFilter(first);
    box.setDefaultSuffix(Extension_of(first));
    box.selectFile(To_Qt(dialog.suggestion));
    if (Run_Modal(box) != QDialog::Accepted || box.selectedFiles().isEmpty())
        return std::nullopt;
    return Chosen(box.selectedFiles().constFirst());
}

}  // namespace

std::string Qt_Filter(const std::string& filter)
{
    std::string qt;
    std::size_t from = 0;
    for (int part = 0; from <= filter.size(); ++part) {
        const std::size_t bar = std::min(filter.find('|', from), filter.size());
        if (part % 2 == 0) {  // the description; the bare pattern after it is left out
            std::string name = filter.substr(from, bar - from);
            if (!name.empty()) {
                if (name.front() == '(')
                    name = "Files " + name;
                qt += (qt.empty() ? "" : ";;") + name;
            }
        }
        from = bar + 1;
    }
    return qt;
}

Host Desktop_Host()
{
    Host host;
    host.messenger = Ask;
    host.open_dialog = Open_File;
    host.save_dialog = Save_File;
    host.date = [] { return From_Qt(QDate::currentDate().toString(Qt::ISODate)); };
    host.time = [] { return From_Qt(QTime::currentTime().toString(QStringLiteral("HH:mm:ss"))); };
    host.wait_pointer = [](bool wait) {
        while (QApplication::overrideCursor() != nullptr)
            QApplication::restoreOverrideCursor();
        if (wait)
            QApplication::setOverrideCursor(Qt::WaitCursor);
    };
    return host;
}

}  // namespace lobemax::screens
