// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/frm_Model.h"

#include <QApplication>
#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "core/messages.h"
#include "core/text.h"
#include "core/variables.h"
#include "forms/departure_notes.h"
#include "forms/model_picture.h"
#include "paint/chart.h"
#include "paint/painter_surface.h"
#include "paint/print.h"
#include "present/plot_engine.h"
#include "screens/desk.h"
#include "screens/form_rows.h"
#include "screens/help_viewer.h"
#include "screens/long_run.h"
#include "screens/status_panel.h"

namespace lobemax::screens {

namespace {

const Form_Control& Words_of(const char* name)
{
    return Control_of(Controls_of_Model(), name);
}

/// The host with a progress function of its own, while it lives.
class Progress_Shown {
public:
    explicit Progress_Shown(std::function<bool(double)> progress)
    {
        Host host = Installed_Host();
        host.progress = std::move(progress);
        before_ = Install_Host(std::move(host));
    }
    ~Progress_Shown() { Install_Host(std::move(before_)); }
    Progress_Shown(const Progress_Shown&) = delete;
    Progress_Shown& operator=(const Progress_Shown&) = delete;

private:
    Host before_;
};

}  // namespace

frm_Model::frm_Model(QWidget* parent)
    : Screen(QStringLiteral("frm_Model"), To_Qt(Title_of_Model(design)), parent), form_(Open_Model_Form(design))
{
    setWindowTitle(To_Qt(Title_of_Model(design)));  // a form-closed cam has taken its model
    auto* const row = new QHBoxLayout;
    row->addLayout(Make_Inputs());
    row->addLayout(Make_Plots(), 1);
    Body().addLayout(row);
    Foot().addLayout(Make_Buttons());
    status_ = new Status_Panel;
    Foot().addWidget(status_);
    Offer_Undo();
    Open_at({1100, 760});
    Fill();
    Refresh();
    const Filling filling(*this);
    Control<QRadioButton>(QStringLiteral("opt_Color(0)")).setChecked(true);
}

QLayout* frm_Model::Make_Inputs()
{
    auto* const column = new QVBoxLayout;
    column->addWidget(Make_Model());
    column->addWidget(Make_Solver());
    column->addWidget(Make_Figures());
    auto* const polydyne = Make_Check(Words_of("chk_Polydyne"), [this](bool ticked) { Tick(ticked); });
    column->addWidget(polydyne);
    column->addStretch();
    return column;
}

void frm_Model::Add_Field(QGridLayout& grid, const Model_Row& row)
{
    Entry* const entry = Make_Entry(row);
    entry->accepted = [this, row](const std::string& text) { Enter(row, text); };
    Add_Line(grid, row, entry);
}

QWidget* frm_Model::Make_Model()
{
    QGroupBox* const frame = Make_Frame(Words_of("fra_Model"));
    auto* const row = new QHBoxLayout(frame);
    auto* const picture = new paint::Drawing_View(QStringLiteral("pct_Model"));
    const int model = design.dynamics.Model_Type;
    picture->Show([model](Surface& surface) { Draw_Model(surface, model); });
    picture->setMinimumSize(190, 230);
    row->addWidget(picture, 1);
    auto* const grid = new QGridLayout;
    for (const Model_Row& field : Fields_of_Model_Screen())
        if (field.place.first <= Model_Field::Preload)
            Add_Field(*grid, field);
    grid->setRowStretch(grid->rowCount(), 1);
    row->addLayout(grid);
    return frame;
}

QWidget* frm_Model::Make_Solver()
{
    QGroupBox* const frame = Make_Frame(Words_of("fra_Solver"));
    auto* const grid = new QGridLayout(frame);
    for (const Model_Row& field : Fields_of_Model_Screen())
        if (field.place.first > Model_Field::Preload)
            Add_Field(*grid, field);
    auto* const solvers = new QHBoxLayout;
    QRadioButton* const runge_kutta = Make_Option(Words_of("opt_Solver(0)"), [] {});
    QRadioButton* const gear = Make_Option(Words_of("opt_Solver(1)"), [] {});
    runge_kutta->setChecked(true);
    gear->setEnabled(false);  // there is no such integrator
    solvers->addWidget(runge_kutta);
    solvers->addWidget(gear);
    grid->addLayout(solvers, grid->rowCount(), 0, 1, 3);
    return frame;
}

QWidget* frm_Model::Make_Figures()
{
    QGroupBox* const frame = Make_Frame(Words_of("fra_Figures"));
    auto* const grid = new QGridLayout(frame);
    int column = 1;
    for (const char* const unit : {"rad/s", "Hz", "rpm"})
        grid->addWidget(new QLabel(QString::fromUtf8(unit)), 0, column++, Qt::AlignRight);
    for (const int frequency : {0, 1}) {
        grid->addWidget(new QLabel(QStringLiteral("f%1").arg(frequency + 1)), frequency + 1, 0);
        for (int k = 0; k < 3; ++k)
            grid->addWidget(Label(Element("lbl_OmegaN", 3 * frequency + k)), frequency + 1, k + 1, Qt::AlignRight);
    }
    for (const Form_Control& read_out : Read_Outs_of_Model()) {
        const int line = grid->rowCount();
        QLabel* const value = Label(To_Qt(read_out.name), {}, To_Qt(read_out.tip));
        grid->addWidget(Make_Caption(read_out, value), line, 0, 1, 3);
        grid->addWidget(value, line, 3, Qt::AlignRight);
    }
    return frame;
}

QLayout* frm_Model::Make_Plots()
{
    auto* const column = new QVBoxLayout;
    column->addLayout(plots_.Make(), 1);
    const Form_Control& words = Words_of("lbl_Notes");
    QLabel* const notes = Label(To_Qt(words.name), {}, To_Qt(words.tip));
    notes->setWordWrap(true);
    column->addWidget(notes);
    auto* const looks = new QHBoxLayout;
    // In a widget of their own: options exclude all below their parent, those of the solver's frame, too.
    auto* const colours = new QWidget;
    auto* const pair = new QHBoxLayout(colours);
    pair->setContentsMargins(0, 0, 0, 0);
    for (const char* const name : {"opt_Color(0)", "opt_Color(1)"})
        pair->addWidget(Make_Option(Words_of(name), [this] { Draw(); }));
    looks->addWidget(colours);
    looks->addWidget(Make_Check(Words_of("chk_Vertline"), [this](bool) { Draw(); }));
    looks->addStretch();
    auto* const progress = new QProgressBar;
    progress->setObjectName(QStringLiteral("pgs_Run"));
    progress->setRange(0, 1000);
    progress->setFormat(QStringLiteral("%p %"));
    looks->addWidget(progress, 1);
    looks->addWidget(Make_Button(Words_of("cmd_Stop"), [this] { stop_ = true; }));
    column->addLayout(looks);
    return column;
}

QLayout* frm_Model::Make_Buttons()
{
    auto* const row = new QHBoxLayout;
    const auto add = [row](const char* name, std::function<void()> pressed) {
        row->addWidget(Make_Button(Words_of(name), std::move(pressed)));
    };
    add("cmd_Cancel", [this] { Back(); });
    row->addStretch();
    row->addWidget(Copy_Button(QStringLiteral("Cop&y")));
    add("cmd_Print", [this] { paint::Print_Form(*this); });
    add("cmd_Help", [] { Open_Help(QStringLiteral("vibration")); });
    row->addStretch();
    add("cmd_Calc", [this] { Calculate(); });
    add("cmd_Replot", [this] { Draw(); });
    add("cmd_Done", [this] { accept(); });
    return row;
}

void frm_Model::showEvent(QShowEvent* event)
{
    Screen::showEvent(event);
    if (!std::exchange(opened_, true) && design.flags.Modelflag)
        Draw();  // of the run before, which a change makes stale
}

void frm_Model::Follow_Design()
{
    Show_Design(design, form_);
    Fill();
    plots_.Clear(*this);
    Refresh();
    if (form_.calculated)
        Draw();
}

void frm_Model::Fill()
{
    const Filling filling(*this);
    for (const Model_Row& row : Fields_of_Model_Screen())
        Control<Entry>(To_Qt(row.name)).Show_Text(form_.Text(row.place));
}

void frm_Model::Refresh()
{
    const Model_Fields_Shown shown = Fields_of_Model(design);
    for (const auto& [name, visible] :
         {std::pair{"txt_Mass(1)", shown.second_mass}, std::pair{"txt_Spring(1)", shown.second_spring},
          std::pair{"txt_Zeta(1)", shown.second_zeta}, std::pair{"txt_Preload", shown.preload}})
        Show_Line(*this, name, visible);
    Show_Units(*this, Fields_of_Model_Screen());
    const Model_Texts texts = Texts_of_Model(design);
    for (int k = 0; k < 6; ++k)
        Control<QLabel>(Element("lbl_OmegaN", k)).setText(To_Qt(texts.lbl_OmegaN[static_cast<std::size_t>(k)]));
    for (const auto& [name, text] :
         {std::pair{"lbl_FreqRatio", texts.lbl_FreqRatio}, std::pair{"lbl_Period", texts.lbl_Period},
          std::pair{"lbl_T_rise", texts.lbl_T_rise}, std::pair{"lbl_T_natural", texts.lbl_T_natural},
          std::pair{"lbl_Gamma", texts.lbl_Gamma}, std::pair{"lbl_Delta_t", texts.lbl_Delta_t},
          std::pair{"lbl_Kount", texts.lbl_Kount}})
        Control<QLabel>(QString::fromUtf8(name)).setText(To_Qt(text));
    auto& polydyne = Control<QCheckBox>(QStringLiteral("chk_Polydyne"));
    polydyne.setText(To_Qt(Polydyne_Caption(design)));
    polydyne.setEnabled(form_.calculated && !running_);
    polydyne.setChecked(design.flags.Polydyne_Calc);
    for (const char* const name : {"cmd_Done", "cmd_Replot"})
        Control<QPushButton>(QString::fromUtf8(name)).setEnabled(form_.calculated && !running_);
    for (const char* const name : {"cmd_Calc", "cmd_Cancel", "cmd_Print", "cmd_Copy"})
        Control<QPushButton>(QString::fromUtf8(name)).setEnabled(!running_);
    for (const char* const name : {"fra_Model", "fra_Solver"})
        Control<QGroupBox>(QString::fromUtf8(name)).setEnabled(!running_);
    Control<QPushButton>(QStringLiteral("cmd_Stop")).setVisible(running_);
    Control<QProgressBar>(QStringLiteral("pgs_Run")).setVisible(running_);
    auto& notes = Control<QLabel>(QStringLiteral("lbl_Notes"));
    notes.setText(form_.calculated && !running_ ? To_Qt(As_Lines(Departure_Notes(design))) : QString());
    notes.setVisible(!notes.text().isEmpty());
    status_->Refresh();
}

void frm_Model::Enter(const Model_Row& row, const std::string& text)
{
    const Model_Entry entry = Edit_Model_Field(design, form_, row.place, text);
    Control<Entry>(To_Qt(row.name)).Show_Text(entry.text);
    form_.calculated = false;
    Model_Setup(design);
    plots_.Clear(*this);
    Refresh();
}

void frm_Model::Run_Stoppable(const std::function<void()>& work)
{
    if (running_)
        return;
    stop_ = false;
    const Long_Run run(*this, running_, [this] { Refresh(); });
    auto& bar = Control<QProgressBar>(QStringLiteral("pgs_Run"));
    bar.setValue(0);
    const Progress_Shown shown([this, &bar](double share) {
        bar.setValue(static_cast<int>(std::lround(share * bar.maximum())));
        QApplication::processEvents();
        return stop_;
    });
    work();
}

void frm_Model::Calculate()
{
    plots_.Clear(*this);
    Run_Stoppable([this] { Calc_Model(design, form_); });
    Fill();
    Draw();
}

void frm_Model::Tick(bool ticked)
{
    if (Is_Filling())
        return;
    plots_.Clear(*this);
    Run_Stoppable([this, ticked] { Tick_Polydyne(design, form_, ticked); });
    Fill();
    Draw();
}

void frm_Model::Back()
{
    bool leave = false;
    Run_Stoppable([&] { leave = May_Leave_Model(design, form_); });
    if (leave)
        reject();
}

void frm_Model::Draw()
{
    if (Is_Filling() || !design.flags.Modelflag)
        return;
    const bool colour = Control<QRadioButton>(QStringLiteral("opt_Color(0)")).isChecked();
    const bool grid = Control<QCheckBox>(QStringLiteral("chk_Vertline")).isChecked();
    const std::array<Model_Plot, 4> plots = Plots_of_Model(design);
    for (int k = 0; k < plots_.Count(); ++k) {
        const Model_Plot& plot = plots[static_cast<std::size_t>(k)];
        if (plot.time.empty())
            continue;
        const std::string name = Trim(design.plot.Var_Name(plot.variable));
        paint::Curve curve;
        curve.name = To_Qt(name);
        curve.unit = To_Qt(Trim(design.plot.Var_Unit(plot.variable)));
        curve.x.assign(plot.time.begin(), plot.time.end());
        curve.y.assign(plot.values.begin(), plot.values.end());
        if (!colour)
            curve.colour = palette().color(QPalette::Text);
        plots_.At(k).Set_Axis_Titles(QStringLiteral("Time (sec)"), curve.name + QStringLiteral("  ") + curve.unit);
        plots_.At(k).Set_Grid(true, grid);
        plots_.At(k).Show({curve});
        const int decimals = Plot_Decimals(std::max(std::abs(plot.smallest), std::abs(plot.largest)));
        const auto shown = [&](double value) { return FNRoundStr(design, value, decimals); };
        plots_.Show_Figures(*this, k, shown(plot.smallest), shown(plot.largest), shown(plot.peak_to_peak));
    }
}

void frm_Model::Close_Box()
{
    if (running_) {
        stop_ = true;
        return;
    }
    Leave_Entry();
    if (form_.calculated)
        accept();
    else
        Back();
}

}  // namespace lobemax::screens
