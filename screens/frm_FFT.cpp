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

#include "core/messages.h"
#include "core/text.h"
#include "core/traps.h"
#include "forms/fft_form.h"
#include "motion/fourier.h"
#include "paint/chart.h"
#include "paint/print.h"
#include "present/plot_selection.h"
#include "screens/desk.h"
#include "screens/form_rows.h"

namespace lobemax::screens {

namespace {

const Form_Control& Words_of(const char* name)
{
    return Control_of(Controls_of_FFT(), name);
}

QStringList Texts_of(const auto& list)
{
    QStringList texts;
    for (const auto& text : list)
        texts.append(To_Qt(text));
    return texts;
}

}  // namespace

frm_FFT::frm_FFT(QWidget* parent)
    : Screen(QStringLiteral("frm_FFT"), To_Qt(Words_of("frm_FFT").caption), parent), variables_(Load_Names(design))
{
    Body().addLayout(Make_Choices());
    QLabel* const function = Label(QStringLiteral("lbl_Function"));
    QFont bold = function->font();
    bold.setWeight(QFont::DemiBold);
    function->setFont(bold);
    Body().addWidget(function);
    Body().addWidget(Make_Charts(), 1);
    Body().addLayout(Make_Totals());
    Foot().addLayout(Make_Buttons());
    Open_at({880, 620});
}

QLayout* frm_FFT::Make_Choices()
{
    auto* const choices = new QHBoxLayout;
    const auto choice = [this, choices](const char* name, const QStringList& entries, int stretch) {
        const Form_Control& words = Words_of(name);
        QComboBox* const list = Choice(
            To_Qt(words.name), entries, [this](int) { Transform(); }, To_Qt(words.tip));
        auto* const column = new QVBoxLayout;
        column->addWidget(Make_Caption(words, list));
        column->addWidget(list);
        column->addStretch();
        choices->addLayout(column, stretch);
        return list;
    };
    std::vector<std::string> names;
    for (const int v : variables_)
        names.push_back(Trim(design.plot.Var_Name(v)));
    QComboBox* const variable = choice("cmb_Var1", Texts_of(names), 1);
    variable->setCurrentIndex(-1);
    variable->setPlaceholderText(QStringLiteral("Pick a variable"));
    QComboBox* const harmonics = choice("cmb_Harmonics", Texts_of(Harmonic_Counts()), 0);
    harmonics->setEditable(true);
    harmonics->setInsertPolicy(QComboBox::NoInsert);
    harmonics->setCurrentText(QString::number(design.motion.No_Harmonics));
    Entry* const typed = Make_Entry(Words_of("txt_Harmonics"));
    typed->Show_Text(From_Qt(harmonics->currentText()));
    typed->accepted = [this](const std::string& text) {
        if (text != std::to_string(design.motion.No_Harmonics))
            Transform();
    };
    harmonics->setLineEdit(typed);
    choice("cmb_Segment", Texts_of(Load_SegmentList(design)), 0);
    choices->addWidget(Make_Button(Words_of("cmd_Clear1"), [this] { Clear(); }), 0, Qt::AlignVCenter);
    const auto frame = [this, choices](const char* name, std::initializer_list<const char*> boxes) {
        QGroupBox* const group = Make_Frame(Words_of(name));
        auto* const row = new QHBoxLayout(group);
        for (const char* const box : boxes)
            row->addWidget(Make_Check(Words_of(box), [this](bool) { Draw(); }));
        choices->addWidget(group);
        return group;
    };
    frame("fra_Grid", {"chk_HGrid", "chk_VGrid"})->findChild<QCheckBox*>(QStringLiteral("chk_HGrid"))->setChecked(true);
    frame("fra_Style", {"chk_Line", "chk_Sticks"})
        ->findChild<QCheckBox*>(QStringLiteral("chk_Sticks"))
        ->setChecked(true);
    return choices;
}

QWidget* frm_FFT::Make_Charts()
{
    auto* const plots = new QWidget;
    plots->setObjectName(QStringLiteral("grf_Plot"));
    auto* const grid = new QGridLayout(plots);
    grid->setContentsMargins(0, 0, 0, 0);
    for (const FFT_Part& part : Parts_of_FFT()) {
        const int k = static_cast<int>(charts_.size());
        auto* const chart = new paint::Chart(design, Element("grf_Plot", k));
        chart->Set_Axis_Titles(QStringLiteral("Harmonic Number"), To_Qt(part.caption));
        grid->addWidget(chart, k / 2, k % 2);
        charts_.append(chart);
    }
    return plots;
}

QLayout* frm_FFT::Make_Totals()
{
    auto* const totals = new QHBoxLayout;
    for (const Form_Control& read_out : Read_Outs_of_FFT().subspan(1)) {  // the first stands above the charts
        QLabel* const value = Label(To_Qt(read_out.name));
        if (!read_out.caption.empty()) {
            if (totals->count() > 0)
                totals->addSpacing(24);
            totals->addWidget(Make_Caption(read_out, value));
        }
        totals->addWidget(value);
    }
    totals->addStretch();
    return totals;
}

QLayout* frm_FFT::Make_Buttons()
{
    auto* const buttons = new QHBoxLayout;
    buttons->addWidget(Make_Button(Words_of("cmd_Cancel"), [this] { reject(); }));
    buttons->addStretch();
    buttons->addWidget(Copy_Button());
    buttons->addWidget(Make_Button(Words_of("cmd_Print"), [this] { paint::Print_Form(*this); }));
    buttons->addStretch();
    QPushButton* const done = Make_Button(Words_of("cmd_Done"), [this] {
        Finish_FFT(design);
        accept();
    });
    done->setEnabled(false);
    buttons->addWidget(done);
    return buttons;
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
    const int count = Enter_Harmonics(design, From_Qt(harmonics.currentText()));
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
    Show_Read_Outs(*this, Read_Outs_of_FFT(), FFT_Texts{});
    for (paint::Chart* const chart : charts_)
        chart->Clear();
}

void frm_FFT::Draw()
{
    const int variable = Variable();
    if (variable == 0 || Shown_Harmonics(design) == 0)
        return;
    Show_Read_Outs(*this, Read_Outs_of_FFT(), Texts_of_FFT(design, variable));
    const auto on = [this](const char* name) { return Control<QCheckBox>(QString::fromUtf8(name)).isChecked(); };
    const paint::Curve_Style style = paint::Look_of_Boxes(on("chk_Line"), on("chk_Sticks"));
    paint::Point_Ticks ticks;  // on whole harmonics, the last one clear of the border
    ticks.points = Shown_Harmonics(design) + 1;
    ticks.tick_every = std::max(Shown_Harmonics(design) / 15, 1);
    ticks.label_every = 2 * ticks.tick_every;
    ticks.margin = 0.5;
    qsizetype k = 0;
    for (const FFT_Part& part : Parts_of_FFT()) {
        paint::Curve curve;
        curve.name = To_Qt(part.caption);
        curve.style = style;
        for (int h = 1; h <= Shown_Harmonics(design); ++h) {
            curve.x.push_back(h);
            curve.y.push_back(design.results.Fft_Work_A(part.row, h));
        }
        paint::Chart& chart = *charts_[k++];
        chart.Set_Ticks(ticks);
        chart.Show({curve});
        chart.Set_Grid(on("chk_HGrid"), on("chk_VGrid"));
    }
}

}  // namespace lobemax::screens
