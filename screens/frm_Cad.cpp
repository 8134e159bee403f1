// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/frm_Cad.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "core/messages.h"
#include "forms/solid_on_demand.h"
#include "paint/cad_sheet.h"
#include "screens/check_mark.h"
#include "screens/desk.h"
#include "screens/form_rows.h"
#include "screens/help_viewer.h"

namespace lobemax::screens {

namespace {

const Form_Control& Words_of(const char* name)
{
    return Control_of(Controls_of_Cad(), name);
}

constexpr std::string_view fixed_keys = "KWHC";  // of the controls that stand on every page

QString Unit_Name(Cad_Kind kind, const Cad_Option& option)
{
    return QStringLiteral("unit_") + To_Qt(Control_of_Option(kind, option));
}

}  // namespace

frm_Cad::frm_Cad(QWidget* parent) : Screen(QStringLiteral("frm_Cad"), To_Qt(Words_of("frm_Cad").caption), parent)
{
    auto* const head = new QGridLayout;
    QStringList names;
    for (const Cad_Kind_Entry& entry : Cad_Kind_Table()) {
        names.append(To_Qt(entry.caption));
        wishes_[entry.kind].kind = entry.kind;
    }
    QComboBox* const kinds = Choice(
        QStringLiteral("cmb_Kind"), names, [this](int index) { Pick_Kind(index); }, To_Qt(Words_of("cmb_Kind").tip));
    head->addWidget(Make_Caption(Words_of("cmb_Kind"), kinds), 0, 0);
    head->addWidget(kinds, 0, 1);
    QLabel* const words = Label(QStringLiteral("lbl_Kind"), {}, To_Qt(Words_of("lbl_Kind").tip));
    head->addWidget(words, 1, 0, 1, 3);
    head->setColumnStretch(2, 1);
    Body().addLayout(head);
    pages_ = new QStackedWidget;
    for (const Cad_Kind_Entry& entry : Cad_Kind_Table())
        pages_->addWidget(Page_of(entry.kind));
    Body().addWidget(pages_);
    auto* const written = new QPlainTextEdit;
    written->setObjectName(QStringLiteral("txt_Written"));
    written->setToolTip(To_Qt(Words_of("txt_Written").tip));
    written->setReadOnly(true);
    written->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    written->setTabChangesFocus(true);
    written->setPlaceholderText(QStringLiteral("Nothing is written yet"));
    written->setMinimumHeight(90);
    Body().addWidget(written, 1);
    mark_ = new Check_Mark(std::nullopt, [this] {
        if (Open_Findings(*this, std::nullopt))
            reject();
    });
    auto* const mark = new QHBoxLayout;
    mark->addWidget(mark_);
    mark->addStretch();
    Foot().addLayout(mark);
    auto* const buttons = new QHBoxLayout;
    buttons->addWidget(Make_Button(Words_of("cmd_Help"), [] { Open_Help(QStringLiteral("cad")); }));
    buttons->addStretch();
    QPushButton* const write = Make_Button(Words_of("cmd_Write"), [this] { Write_File(); });
    buttons->addWidget(write);
    buttons->addWidget(Make_Button(Words_of("cmd_Close"), [this] { reject(); }));
    Foot().addLayout(buttons);
    mark_->Refresh();
    for (const Cad_Kind_Entry& entry : Cad_Kind_Table())
        Show_Option_Values(entry.kind);
    Open_at({760, 560});
    Pick_Kind(0);
}

QWidget* frm_Cad::Page_of(Cad_Kind kind)
{
    auto* const page = new QWidget;
    page->setObjectName(QStringLiteral("page_") + To_Qt(Entry_of(kind).name));
    auto* const all = new QVBoxLayout(page);
    all->setContentsMargins(0, 0, 0, 0);
    auto* const grid = new QGridLayout;
    const std::vector<const Cad_Option*> options = Options_for(design, kind);
    std::vector<std::string> captions;
    for (const Cad_Option* option : options)
        captions.emplace_back(option->caption);
    const std::vector<std::string> keyed = With_Access_Keys(captions, fixed_keys);
    constexpr int many = 7;
    const auto count = static_cast<int>(options.size());
    const int columns = count > 2 * many ? 3 : count > many ? 2 : 1;
    const int lines = (count + columns - 1) / columns;
    constexpr int cells = 4;  // of a line: caption, field, unit, air
    for (int i = 0; i < count; ++i) {
        const Cad_Option& option = *options[static_cast<std::size_t>(i)];
        const int line = i % lines;
        const int at = i / lines * cells;
        QWidget* const field = Field_of(kind, option);
        const QString caption = To_Qt(keyed[static_cast<std::size_t>(i)]);
        if (auto* const box = qobject_cast<QCheckBox*>(field)) {
            box->setText(caption);
            grid->addWidget(field, line, at, 1, 2);
            continue;
        }
        QLabel* const label = Label(QStringLiteral("lbl_") + field->objectName(), caption, field->toolTip());
        label->setBuddy(field);
        field->setAccessibleName(To_Qt(option.caption));
        grid->addWidget(label, line, at);
        grid->addWidget(field, line, at + 1);
        grid->addWidget(Label(Unit_Name(kind, option)), line, at + 2);
    }
    for (int c = 0; c < columns; ++c) {
        grid->setColumnMinimumWidth(c * cells + 3, 10);
        grid->setColumnStretch(c * cells + 3, 1);
    }
    all->addLayout(grid);
    all->addStretch();
    return page;
}

QWidget* frm_Cad::Field_of(Cad_Kind kind, const Cad_Option& option)
{
    const QString name = To_Qt(Control_of_Option(kind, option));
    const QString tip =
        To_Qt(std::string(option.words) + ". On the command line --" +
              (option.entry == Cad_Entry::flag && option.usual == "yes" ? "no-" : "") + std::string(option.name));
    const auto put = [this, &option](const std::string& text) {
        return Enter_Option(design, Wish(), option, text).accepted;
    };
    if (option.entry == Cad_Entry::flag)
        return screens::Check(
            name, {}, [put](bool on) { put(on ? "yes" : "no"); }, tip);
    if (option.entry == Cad_Entry::choice) {
        const std::vector<std::string> words = Choices_of(option);
        QStringList entries;
        for (const std::string& word : words)
            entries.append(To_Qt(word));
        return Choice(
            name, entries,
            [this, put, words](int index) {
                put(words[static_cast<std::size_t>(index)]);
                Show_Option_Values(kind_);
            },
            tip);
    }
    auto* const entry = new Entry(name, tip);
    constexpr int width = 76;
    entry->setMaximumWidth(width);
    if (option.entry == Cad_Entry::word)
        entry->Takes_Words();
    entry->accepted = [this, entry, &option](const std::string& text) {
        const Form_Entry result = Enter_Option(design, Wish(), option, text);
        entry->Show_Text(result.text);
        if (result.takes_focus)
            QMetaObject::invokeMethod(
                entry, [entry] { entry->setFocus(); }, Qt::QueuedConnection);
    };
    return entry;
}

void frm_Cad::Pick_Kind(int index)
{
    const Cad_Kind_Entry& entry = Cad_Kind_Table()[static_cast<std::size_t>(index)];
    kind_ = entry.kind;
    Control<QLabel>(QStringLiteral("lbl_Kind")).setText(To_Qt(entry.words) + QLatin1Char('.'));
    pages_->setCurrentIndex(index);
    Show_Option_Values(kind_);
}

void frm_Cad::Show_Option_Values(Cad_Kind kind)
{
    const Filling filling(*this);
    for (const Cad_Option* option : Options_for(design, kind)) {
        const QString name = To_Qt(Control_of_Option(kind, *option));
        const std::string text = Text_of_Option(design, wishes_[kind], *option);
        if (option->entry == Cad_Entry::flag) {
            Control<QCheckBox>(name).setChecked(text == "yes");
            continue;
        }
        Control<QLabel>(Unit_Name(kind, *option)).setText(To_Qt(Unit_of_Option(design, wishes_[kind], *option)));
        if (option->entry == Cad_Entry::choice)
            Control<QComboBox>(name).setCurrentText(To_Qt(text));
        else
            Control<Entry>(name).Show_Text(text);
    }
}

namespace {

/// The pointer of long work, put back however the work ends.
struct Wait_Pointer {
    Wait_Pointer() { Show_Wait_Pointer(); }
    ~Wait_Pointer() { Restore_Pointer(); }
    Wait_Pointer(const Wait_Pointer&) = delete;
    Wait_Pointer& operator=(const Wait_Pointer&) = delete;
};

}  // namespace

void frm_Cad::Write_File()
{
    const std::string suggestion = Suggested_Cad_Name(design, kind_);
    Cad_Wish wish = Wish();
    const auto make = [](const Cad_Wish& wanted, const std::string& name) {
        const Wait_Pointer waiting;
        return Make_Cad(design, wanted, name, Make_Solid_on_Demand);
    };
    Made_Cad made = make(wish, suggestion);
    if (!made.refusal.empty()) {
        if (!made.may_be_forced) {
            Show_Message(made.refusal, Buttons::OK, Symbol::exclamation);
            return;
        }
        if (Show_Message(Question_of_Cad(made), Buttons::Yes_No, Symbol::exclamation, Answer::No) != Answer::Yes)
            return;
        wish.even_if_wrong = true;
    }
    const Host& host = Installed_Host();
    const std::string ending(Entry_of(kind_).ending);
    const std::string pattern = "(*" + ending + ")|*" + ending;
    const std::optional<std::string> path =
        host.save_dialog ? host.save_dialog({"Write " + std::string(Entry_of(kind_).caption),
                                             pattern + "|All files (*.*)|*.*", 1, suggestion, true})
                         : std::nullopt;
    if (!path)
        return;
    const bool solid = kind_ == Cad_Kind::step || kind_ == Cad_Kind::stl;
    if (!solid || wish.even_if_wrong)
        made = make(wish, *path);  // the file tells its own name
    const Written_Cad written = Write_Cad(made, *path, paint::Make_Sheet);
    if (!written.refusal.empty()) {
        Show_Message(written.refusal, Buttons::OK, Symbol::exclamation);
        return;
    }
    QStringList lines;
    for (const std::string& line : Lines_of_Written(written.facts, *path, written.text_path))
        lines.append(To_Qt(line));
    Control<QPlainTextEdit>(QStringLiteral("txt_Written")).setPlainText(lines.join(QLatin1Char('\n')));
}

}  // namespace lobemax::screens
