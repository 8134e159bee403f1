// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/frm_FFT.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <array>

#include "core/messages.h"
#include "core/text.h"
#include "core/traps.h"
#include "motion/fourier.h"
#include "paint/chart.h"
#include "paint/print.h"
#include "present/plot_selection.h"
#include "screens/desk.h"

namespace lobemax::screens {

namespace {

/// A result of the transform: its row in the one-sided table and its caption.
struct Part {
    const char* caption;
    int row;
};

constexpr std::array parts{Part{"Mag", 2}, Part{"Phs", 3}, Part{"Real", 0}, Part{"Img", 1}};
const QStringList harmonic_counts{QStringLiteral("5"),   QStringLiteral("10"), QStringLiteral("15"),
                                  QStringLiteral("20"),  QStringLiteral("30"), QStringLiteral("50"),
                                  QStringLiteral("100"), QStringLiteral("180")};

}  // namespace

frm_FFT::frm_FFT(QWidget* parent)
    : Screen(QStringLiteral("frm_FFT"), QStringLiteral("Fourier transform"), parent), variables_(Load_Names(design))
{
    QStringList names;
    for (const int v : variables_)
        names.append(To_Qt(Trim(design.plot.Var_Name(v))));
    QComboBox* const variable = Choice(
        QStringLiteral("cmb_Var1"), names, [this](int) { Transform(); }, QStringLiteral("The variable to transform"));
    variable->setCurrentIndex(-1);
    variable->setPlaceholderText(QStringLiteral("Pick a variable"));
    QComboBox* const harmonics = Choice(
        QStringLiteral("cmb_Harmonics"), harmonic_counts, [this](int) { Transform(); },
        QStringLiteral("How many harmonics are shown; a number may be typed"));
    harmonics->setEditable(true);
    harmonics->setInsertPolicy(QComboBox::NoInsert);
    harmonics->setCurrentText(QString::number(design.motion.No_Harmonics));
    connect(harmonics->lineEdit(), &QLineEdit::editingFinished, this, [this, harmonics] {
        if (harmonics->currentText() != QString::number(design.motion.No_Harmonics))
            Transform();
    });
    QStringList segments;
    for (const std::string& entry : Load_SegmentList(design))
        segments.append(To_Qt(entry));
    QComboBox* const segment = Choice(QStringLiteral("cmb_Segment"), segments, [this](int) { Transform(); });

    auto* const choices = new QHBoxLayout;
    const auto captioned = [choices](int stretch, const QString& text, QWidget* field) {
        auto* const label = new QLabel(text);
        label->setBuddy(field);
        auto* const column = new QVBoxLayout;
        column->addWidget(label);
        column->addWidget(field);
        column->addStretch();
        choices->addLayout(column, stretch);
    };
    captioned(1, QStringLiteral("&Variable"), variable);
    captioned(0, QStringLiteral("No of &Harmonics"), harmonics);
    captioned(0, QStringLiteral("&Segment for FFT"), segment);
    choices->addWidget(Button(QStringLiteral("cmd_Clear1"), QStringLiteral("C&lear"), [this] { Clear(); }), 0,
                       Qt::AlignVCenter);
    const auto looks = [this](bool) { Draw(); };
    auto* const grids = new QGroupBox(QStringLiteral("Grid"));
    auto* const grid_row = new QHBoxLayout(grids);
    QCheckBox* const horizontal = Check(QStringLiteral("chk_HGrid"), QStringLiteral("Horiz"), looks);
    QCheckBox* const vertical = Check(QStringLiteral("chk_VGrid"), QStringLiteral("Vertic"), looks);
    grid_row->addWidget(horizontal);
    grid_row->addWidget(vertical);
    auto* const styles = new QGroupBox(QStringLiteral("Style"));
    auto* const style_row = new QHBoxLayout(styles);
    QCheckBox* const line = Check(QStringLiteral("chk_Line"), QStringLiteral("Envelope"), looks);
    QCheckBox* const sticks = Check(QStringLiteral("chk_Sticks"), QStringLiteral("Spectral Lines"), looks);
    style_row->addWidget(line);
    style_row->addWidget(sticks);
    for (QCheckBox* const box : {horizontal, sticks})
        box->setChecked(true);
    choices->addWidget(grids);
    choices->addWidget(styles);

    QLabel* const function = Label(QStringLiteral("lbl_Function"));
    QFont bold = function->font();
    bold.setWeight(QFont::DemiBold);
    function->setFont(bold);
    auto* const plots = new QWidget;
    plots->setObjectName(QStringLiteral("grf_Plot"));
    auto* const plot_grid = new QGridLayout(plots);
    plot_grid->setContentsMargins(0, 0, 0, 0);
    for (std::size_t k = 0; k < parts.size(); ++k) {
        auto* const chart = new paint::Chart(design, Element("grf_Plot", static_cast<int>(k)));
        chart->Set_Axis_Titles(QStringLiteral("Harmonic Number"), QString::fromUtf8(parts[k].caption));
        plot_grid->addWidget(chart, static_cast<int>(k) / 2, static_cast<int>(k) % 2);
        charts_.append(chart);
    }
    auto* const totals = new QHBoxLayout;
    totals->addWidget(new QLabel(QStringLiteral("Harmonic Power")));
    totals->addWidget(Label(QStringLiteral("lbl_Power")));
    totals->addWidget(Label(QStringLiteral("lbl_powerunits")));
    totals->addSpacing(24);
    totals->addWidget(new QLabel(QStringLiteral("Harmonic Sum")));
    totals->addWidget(Label(QStringLiteral("lbl_Sum")));
    totals->addWidget(Label(QStringLiteral("lbl_sumunits")));
    totals->addStretch();

    auto* const buttons = new QHBoxLayout;
    buttons->addWidget(Button(QStringLiteral("cmd_Cancel"), QStringLiteral("< &Back"), [this] { reject(); }));
    buttons->addStretch();
    buttons->addWidget(Copy_Button());
    buttons->addWidget(
        Button(QStringLiteral("cmd_Print"), QStringLiteral("&Print"), [this] { paint::Print_Form(*this); }));
    buttons->addStretch();
    QPushButton* const done = Button(QStringLiteral("cmd_Done"), QStringLiteral("&Next >"), [this] {
        Finish_FFT(design);
        accept();
    });
    done->setEnabled(false);
    buttons->addWidget(done);

    Body().addLayout(choices);
    Body().addWidget(function);
    Body().addWidget(plots, 1);
    Body().addLayout(totals);
    Foot().addLayout(buttons);
    Open_at({880, 620});
}

int frm_FFT::Variable() const
{
    const int index = Control<QComboBox>(QStringLiteral("cmb_Var1")).currentIndex();
    return index < 0 ? 0 : variables_.at(static_cast<std::size_t>(index));
}

void frm_FFT::Transform()
{
    if (Is_Filling())
        return;
    const Filling filling(*this);
    const int variable = Variable();
    auto& harmonics = Control<QComboBox>(QStringLiteral("cmb_Harmonics"));
    const double typed = std::min(Val(design, From_Qt(harmonics.currentText())), 32767.0);
    const int count = Set_Harmonics(design, static_cast<int>(std::max(typed, 0.0)));
    harmonics.setCurrentText(QString::number(count));
    const int segment =
        Segment_of_Entry(design, From_Qt(Control<QComboBox>(QStringLiteral("cmb_Segment")).currentText()));
    bool done = false;
    if (May_Transform(variable != 0, variable, count))
        Trap("frm_FFT.Transform", [&] {
            const Dft_Range range = Range_of_Segment(design, segment);
            done = Do_DFT(design, variable, range.first, range.last, count);
        });
    Control<QPushButton>(QStringLiteral("cmd_Done")).setEnabled(done);
    if (done)
        Draw();
    else
        Blank();  // the figures of the transform before are not those of the choices that stand
}

void frm_FFT::Clear()
{
    const Filling filling(*this);
    Clear_FFT(design);
    Control<QComboBox>(QStringLiteral("cmb_Var1")).setCurrentIndex(-1);
    Control<QPushButton>(QStringLiteral("cmd_Done")).setEnabled(false);
    Blank();
}

void frm_FFT::Blank()
{
    for (const char* const name : {"lbl_Function", "lbl_Power", "lbl_powerunits", "lbl_Sum", "lbl_sumunits"})
        Control<QLabel>(QString::fromUtf8(name)).clear();
    for (paint::Chart* const chart : charts_)
        chart->Clear();
}

void frm_FFT::Draw()
{
    const int variable = Variable();
    if (variable == 0 || Shown_Harmonics(design) == 0)
        return;
    Control<QLabel>(QStringLiteral("lbl_Function")).setText(To_Qt(Fft_Function_Text(design, variable)));
    Control<QLabel>(QStringLiteral("lbl_Power")).setText(To_Qt(Trim(FNRoundStr(design, Harmonic_Power(design), 4))));
    Control<QLabel>(QStringLiteral("lbl_powerunits")).setText(To_Qt(Fft_Power_Unit(design, variable)));
    Control<QLabel>(QStringLiteral("lbl_Sum")).setText(To_Qt(Trim(FNRoundStr(design, Harmonic_Sum(design), 4))));
    Control<QLabel>(QStringLiteral("lbl_sumunits")).setText(To_Qt(Fft_Sum_Unit(design, variable)));
    const auto on = [this](const char* name) { return Control<QCheckBox>(QString::fromUtf8(name)).isChecked(); };
    const paint::Curve_Style style = paint::Look_of_Boxes(on("chk_Line"), on("chk_Sticks"));
    paint::Point_Ticks ticks;  // on whole harmonics, the last one clear of the border
    ticks.points = Shown_Harmonics(design) + 1;
    ticks.tick_every = std::max(Shown_Harmonics(design) / 15, 1);
    ticks.label_every = 2 * ticks.tick_every;
    ticks.margin = 0.5;
    for (std::size_t k = 0; k < parts.size(); ++k) {
        paint::Curve curve;
        curve.name = QString::fromUtf8(parts[k].caption);
        curve.style = style;
        for (int h = 1; h <= Shown_Harmonics(design); ++h) {
            curve.x.push_back(h);
            curve.y.push_back(design.results.Fft_Work_A(parts[k].row, h));
        }
        paint::Chart& chart = *charts_[static_cast<qsizetype>(k)];
        chart.Set_Ticks(ticks);
        chart.Show({curve});
        chart.Set_Grid(on("chk_HGrid"), on("chk_VGrid"));
    }
}

}  // namespace lobemax::screens
