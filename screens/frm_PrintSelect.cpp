// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/frm_PrintSelect.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>
#include <algorithm>

#include "core/design_state.h"
#include "core/text.h"
#include "edit/door.h"
#include "present/plot_selection.h"
#include "screens/desk.h"
#include "screens/form_rows.h"
#include "screens/frm_PrintData.h"
#include "screens/frm_Report.h"
#include "screens/help_viewer.h"

namespace lobemax::screens {

namespace {

const Form_Control& Words_of(std::string_view name)
{
    return Control_of(Controls_of_Print(), name);
}

QString Name_of(int variable)
{
    return variable == 0 ? QString() : To_Qt(Trim(design.plot.Var_Name(variable)));
}

int Place_of(const std::vector<int>& list, int entry)
{
    const auto found = std::ranges::find(list, entry);
    return found == list.end() ? -1 : static_cast<int>(found - list.begin());
}

QComboBox* List(const char* name, const QString& control, std::function<void(int)> picked,
                const QStringList& entries = {})
{
    return Choice(control, entries, std::move(picked), To_Qt(Words_of(name).tip));
}

QStringList Decimals()
{
    QStringList texts;
    for (const std::string& text : Decimal_Texts())
        texts.append(To_Qt(text));
    return texts;
}

}  // namespace

frm_PrintSelect::frm_PrintSelect(QWidget* parent)
    : Screen(QStringLiteral("frm_PrintSelect"), QStringLiteral("Print: choose a table"), parent),
      choice_(Open_Print_Choice(design))
{
    Body().addLayout(Make_Head());
    auto* const methods = new QWidget;  // its options take the mark from each other alone
    auto* const sets = new QHBoxLayout(methods);
    sets->setContentsMargins({});
    for (const int k : {0, 1}) {
        const QString name = Element("opt_PrintSet", k);
        sets->addWidget(Make_Option(Words_of(From_Qt(name)), [this, k] {
            choice_.presets = k == 1;
            choice_.preset = 0;
            choice_.variables.fill(0);
            Refresh();
        }));
    }
    sets->addStretch();
    Body().addWidget(methods);
    Body().addWidget(Make_Presets());
    Body().addWidget(Make_Columns());
    QLabel* const transform = Label(QStringLiteral("lbl_Transform"), To_Qt(Note_on_Transform(design)));
    transform->setWordWrap(true);
    transform->setVisible(!transform->text().isEmpty());
    Body().addWidget(transform);
    QLabel* const reason = Label(QStringLiteral("lbl_Reason"));
    reason->setWordWrap(true);
    Body().addWidget(reason);
    Body().addStretch();
    Foot().addLayout(Make_Foot());
    Open_at({680, 460});
    Refresh();
}

QLayout* frm_PrintSelect::Make_Head()
{
    auto* const head = new QHBoxLayout;
    const auto frame = [head](const char* name) {
        QGroupBox* const box = Make_Frame(Words_of(name));
        head->addWidget(box);
        return new QVBoxLayout(box);
    };
    QVBoxLayout* const where = frame("fra_Whereto");
    for (int k = 0; k < static_cast<int>(Print_To_Captions.size()); ++k)
        where->addWidget(
            Option(Element("opt_Whereto", k), To_Qt(Print_To_Captions[static_cast<std::size_t>(k)]), [this, k] {
                choice_.where = static_cast<Print_To>(k);
                Refresh();
            }));
    QVBoxLayout* const base = frame("fra_Base");
    for (const int k : {0, 1})
        base->addWidget(Make_Option(Words_of(From_Qt(Element("opt_Base", k))), [this, k] {
            choice_.over_time = k == 1;
            choice_.variables.fill(0);
            Refresh();
        }));
    base->addStretch();
    QVBoxLayout* const step = frame("fra_Step");
    auto* const row = new QHBoxLayout;
    row->addWidget(List("cmb_Step", QStringLiteral("cmb_Step"), [this](int k) {
        choice_.step = steps_.at(static_cast<std::size_t>(k));
        Put(design, "Printstep", choice_.step);
    }));
    row->addWidget(new QLabel(QStringLiteral("points")));
    step->addLayout(row);
    step->addStretch();
    QStringList segments;
    for (const std::string& entry : Load_SegmentList(design))
        segments.append(To_Qt(entry));
    QVBoxLayout* const segment = frame("fra_Segment");
    segment->addWidget(List(
        "cmb_Segment", QStringLiteral("cmb_Segment"),
        [this, segments](int k) {
            choice_.segment = Segment_of_Entry(design, From_Qt(segments.at(k)));
            Refresh();
        },
        segments));
    segment->addStretch();
    QVBoxLayout* const all = frame("fra_DecimalAll");
    all->addWidget(List(
        "cmb_DecimalAll", QStringLiteral("cmb_DecimalAll"),
        [this](int k) {
            choice_.decimals.fill(k);
            Refresh();
        },
        Decimals()));
    all->addStretch();
    return head;
}

QWidget* frm_PrintSelect::Make_Presets()
{
    QGroupBox* const frame = Make_Frame(Words_of("fra_Preset"));
    auto* const row = new QHBoxLayout(frame);
    auto* const list = List("cmb_Segment", QStringLiteral("cmb_Preset"), [this](int k) {
        Pick_Print_Preset(choice_, presets_.at(static_cast<std::size_t>(k)));
        Refresh();
    });
    list->setToolTip({});
    list->setPlaceholderText(QStringLiteral("Pick a preset"));
    row->addWidget(list, 1);
    row->addWidget(Make_Button(Words_of("cmd_ClearPreset"), [this] {
        Pick_Print_Preset(choice_, 0);
        Refresh();
    }));
    return frame;
}

QWidget* frm_PrintSelect::Make_Columns()
{
    QGroupBox* const frame = Make_Frame(Words_of("fra_Mix"));
    auto* const grid = new QGridLayout(frame);
    grid->addWidget(new QLabel(QStringLiteral("Decimals")), 0, 3);
    for (int k = 1; k <= Print_Columns; ++k) {
        const auto place = static_cast<std::size_t>(k - 1);
        const QString name = QStringLiteral("cmb_Var%1").arg(k);
        auto* const caption = new QLabel(QStringLiteral("Column &%1").arg(k));
        QComboBox* const list = screens::Choice(name, {}, [this, place](int index) {
            choice_.variables.at(place) = index == 0 ? 0 : variables_.at(static_cast<std::size_t>(index - 1));
            Refresh();
        });
        caption->setBuddy(list);
        grid->addWidget(caption, k, 0);
        grid->addWidget(list, k, 1);
        grid->addWidget(Label(Element("lbl_Column", k)), k, 2);
        grid->addWidget(List(
                            "cmb_Decimal", Element("cmb_Decimal", k),
                            [this, place](int index) {
                                choice_.decimals.at(place) = index;
                                Refresh();
                            },
                            Decimals()),
                        k, 3);
    }
    grid->addWidget(Make_Button(Words_of("cmd_ClearAll"),
                                [this] {
                                    choice_.variables.fill(0);
                                    Refresh();
                                }),
                    Print_Columns + 1, 3);
    grid->setColumnStretch(1, 2);
    grid->setColumnStretch(2, 1);
    return frame;
}

QLayout* frm_PrintSelect::Make_Foot()
{
    auto* const buttons = new QHBoxLayout;
    const auto add = [&](const char* name, std::function<void()> work) {
        buttons->addWidget(Make_Button(Words_of(name), std::move(work)));
    };
    add("cmd_Cancel", [this] { reject(); });
    buttons->addStretch();
    add("cmd_Help", [] { Open_Help(QStringLiteral("printing")); });
    add("cmd_Report", [this] {
        frm_Report report(this);
        Run_Modal(report);
    });
    add("cmd_Preview", [this] { Preview_Table(this, choice_); });
    add("cmd_PDF", [this] { Save_Table_as_PDF(choice_); });
    buttons->addStretch();
    add("cmd_Done", [this] { Print_cam_data(); });
    return buttons;
}

/// Everything that the choice shows and allows.
void frm_PrintSelect::Refresh()
{
    const Filling filling(*this);
    Fit_Print_Choice(design, choice_);
    variables_ = Print_Variables(design, choice_);
    presets_ = Print_Presets(design, choice_);
    steps_ = Print_Steps(choice_);
    const auto list = [this](const char* name) -> QComboBox& { return Control<QComboBox>(QString::fromUtf8(name)); };
    const auto fill = [](QComboBox& box, const QStringList& texts, int index) {
        box.clear();
        box.addItems(texts);
        box.setCurrentIndex(index);
    };
    Control<QRadioButton>(Element("opt_Whereto", static_cast<int>(choice_.where))).setChecked(true);
    Control<QRadioButton>(Element("opt_Base", choice_.over_time ? 1 : 0)).setChecked(true);
    Control<QRadioButton>(Element("opt_Base", 1)).setEnabled(Time_Table_Possible(design));
    Control<QRadioButton>(Element("opt_PrintSet", choice_.presets ? 1 : 0)).setChecked(true);
    Control<QRadioButton>(Element("opt_PrintSet", 1)).setEnabled(!presets_.empty());
    QStringList steps;
    for (const int step : steps_)
        steps.append(QString::number(step));
    fill(list("cmb_Step"), steps, Place_of(steps_, choice_.step));
    list("cmb_Segment").setCurrentIndex(choice_.segment);
    list("cmb_Segment").setEnabled(!choice_.over_time);
    const bool same = std::ranges::all_of(choice_.decimals, [&](int d) { return d == choice_.decimals[0]; });
    list("cmb_DecimalAll").setCurrentIndex(same ? choice_.decimals[0] : -1);
    QStringList presets;
    for (const int entry : presets_)
        presets.append(To_Qt(Presets_of_Style(style::four_windows)[static_cast<std::size_t>(entry - 1)].text));
    fill(list("cmb_Preset"), presets, Place_of(presets_, choice_.preset));
    Control<QGroupBox>(QStringLiteral("fra_Preset")).setEnabled(choice_.presets);
    QStringList names{QStringLiteral("(none)")};
    for (const int v : variables_)
        names.append(Name_of(v));
    for (int k = 1; k <= Print_Columns; ++k) {
        const auto place = static_cast<std::size_t>(k - 1);
        const int variable = choice_.variables.at(place);
        auto& box = Control<QComboBox>(QStringLiteral("cmb_Var%1").arg(k));
        fill(box, names, Place_of(variables_, variable) + 1);
        box.setEnabled(!choice_.presets);
        Control<QLabel>(Element("lbl_Column", k)).setText(Name_of(variable));
        Control<QComboBox>(Element("cmb_Decimal", k)).setCurrentIndex(choice_.decimals.at(place));
    }
    Control<QPushButton>(QStringLiteral("cmd_ClearAll")).setEnabled(!choice_.presets);
    Control<QLabel>(QStringLiteral("lbl_Reason")).setText(To_Qt(Why_No_Table(design, choice_)));
    const bool ready = Print_OK(design, choice_);
    for (const char* const name : {"cmd_Done", "cmd_Preview", "cmd_PDF"})
        Control<QPushButton>(QString::fromUtf8(name)).setEnabled(ready);
}

/// To where the table goes.
void frm_PrintSelect::Print_cam_data()
{
    switch (choice_.where) {
    case Print_To::Screen: {
        frm_PrintData shown(choice_, this);
        if (Run_Modal(shown) == QDialog::Accepted)
            accept();
        return;
    }
    case Print_To::Printer:
        Print_to_Printer(this, choice_);
        return;
    case Print_To::File:
        Print_to_File(design, choice_);
        return;
    }
}

}  // namespace lobemax::screens
