// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/frm_Plots.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <cmath>

#include "core/messages.h"
#include "core/text.h"
#include "core/traps.h"
#include "core/units.h"
#include "paint/plot_charts.h"
#include "paint/print.h"
#include "present/plot_engine.h"
#include "present/plot_selection.h"
#include "screens/desk.h"
#include "screens/help_viewer.h"

namespace lobemax::screens {

namespace {

QString Name_of(int variable)
{
    return To_Qt(Trim(design.plot.Var_Name(variable)));
}

/// Variables that a style offers: a polar plot has the closed curves before the others.
std::vector<int> Offered(int plot_style)
{
    std::vector<int> list;
    if (plot_style == style::polar)
        list = Composite_Choices(design);
    for (const int v : Load_Names(design))
        list.push_back(v);
    return list;
}

/// A small picture of a style for its button.
QPixmap Style_Picture(int plot_style, const QPalette& palette)
{
    QPixmap picture(96, 60);
    picture.fill(palette.color(QPalette::Base));
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    const auto wave = [&](const QRectF& box) {
        painter.setPen(palette.color(QPalette::Mid));
        painter.drawRect(box);
        painter.setPen(QPen(palette.color(QPalette::Highlight), 1.6));
        QPolygonF line;
        for (int i = 0; i <= 24; ++i)
            line.append(
                {box.left() + box.width() * i / 24, box.center().y() - box.height() * 0.38 * std::sin(i * PI2 / 24)});
        painter.drawPolyline(line);
    };
    if (plot_style == style::polar) {
        painter.setPen(QPen(palette.color(QPalette::Highlight), 1.6));
        painter.drawEllipse(QRectF(28, 8, 44, 44));
        painter.setPen(palette.color(QPalette::Mid));
        painter.drawLine(QPointF(20, 30), QPointF(80, 30));
        painter.drawLine(QPointF(50, 4), QPointF(50, 56));
        return picture;
    }
    const int windows = paint::Windows_of(plot_style);
    const int columns = windows == 4 ? 2 : 1;
    const int rows = windows == 1 ? 1 : 2;
    for (int k = 0; k < windows; ++k)
        wave(QRectF(4 + (k % columns) * 88.0 / columns, 4 + (k / columns) * 52.0 / rows, 88.0 / columns - 4,
                    52.0 / rows - 4));
    return picture;
}

}  // namespace

frm_PlotType::frm_PlotType(QWidget* parent)
    : Screen(QStringLiteral("frm_PlotType"), QStringLiteral("Plot: choose a style"), parent)
{
    auto* const grid = new QGridLayout;
    for (int s = style::single_window; s <= style::polar; ++s) {
        QRadioButton* const option =
            Option(Element("opt_PickPlot", s), To_Qt(Style_Caption(s)), [s] { design.plot.Plot_Style = s; });
        option->setChecked(design.plot.Plot_Style == s);
        QLabel* const picture = Label(Element("pct_PickPlot", s));
        picture->setPixmap(Style_Picture(s, palette()));
        grid->addWidget(picture, s, 0);
        grid->addWidget(option, s, 1);
    }
    grid->setHorizontalSpacing(18);
    grid->setColumnStretch(1, 1);
    auto* const buttons = new QHBoxLayout;
    buttons->addWidget(Button(QStringLiteral("cmd_CancelPickPlot"), QStringLiteral("< &Back"), [this] { reject(); }));
    buttons->addStretch();
    QPushButton* const next =
        Button(QStringLiteral("cmd_PickPlotDone"), QStringLiteral("&Next >"), [this] { accept(); });
    next->setDefault(true);
    buttons->addWidget(next);
    Body().addLayout(grid);
    Body().addStretch();
    Foot().addLayout(buttons);
    Stay_Small();
}

frm_PlotSelect::frm_PlotSelect(int plot_style, QWidget* parent)
    : Screen(QStringLiteral("frm_PlotSelect%1").arg(plot_style), To_Qt(Style_Caption(plot_style)), parent),
      style_(plot_style),
      variables_(Offered(plot_style)),
      presets_(Load_Presets(design, plot_style))
{
    const int most = Functions_of_Style(style_).most;
    auto* const methods = new QHBoxLayout;
    methods->addWidget(
        Option(Element("opt_PrintSet", 0), QStringLiteral("Preset Formats"), [this] { Use_Presets(true); }));
    methods->addWidget(
        Option(Element("opt_PrintSet", 1), QStringLiteral("Mix and Match"), [this] { Use_Presets(false); }));
    methods->addStretch();
    QStringList preset_texts;
    for (const int entry : presets_)
        preset_texts.append(To_Qt(Presets_of_Style(style_)[static_cast<std::size_t>(entry - 1)].text));
    auto* const preset_frame = new QGroupBox(QStringLiteral("Preset Formats"));
    preset_frame->setObjectName(QStringLiteral("fra_Preset"));
    auto* const preset_row = new QHBoxLayout(preset_frame);
    QComboBox* const preset = Choice(QStringLiteral("cmb_Preset"), preset_texts, [this](int k) {
        Choose_Preset2(design, style_, presets_.at(static_cast<std::size_t>(k)));
        Picked();
    });
    preset->setPlaceholderText(QStringLiteral("Pick a preset"));
    preset->setCurrentIndex(-1);
    preset_row->addWidget(preset, 1);
    preset_row->addWidget(Button(QStringLiteral("cmd_ClearPreset"), QStringLiteral("&Clear"), [this, preset] {
        preset->setCurrentIndex(-1);
        design.plot.Num_Sets = 0;
        Picked();
    }));
    QStringList names;
    for (const int v : variables_)
        names.append(Name_of(v));
    auto* const mix_frame = new QGroupBox(QStringLiteral("Mix and Match"));
    mix_frame->setObjectName(QStringLiteral("fra_Mix"));
    auto* const mix = new QGridLayout(mix_frame);
    for (int k = 1; k <= most; ++k) {
        auto* const frame = new QWidget;
        frame->setObjectName(QStringLiteral("fra_Function%1").arg(k));
        auto* const row = new QHBoxLayout(frame);
        row->setContentsMargins(0, 0, 0, 0);
        QComboBox* const list = Choice(QStringLiteral("cmb_Var%1").arg(k), names, [this, k](int) {
            Open_Function(k + 1, true);  // a pick lets the next function be picked
            Picked();
        });
        list->setPlaceholderText(QStringLiteral("Function %1").arg(k));
        list->setCurrentIndex(-1);
        row->addWidget(list, 1);
        // One access key is one button's: that of the first that can be closed.
        row->addWidget(Button(QStringLiteral("cmd_Clear%1").arg(k),
                              k == 1   ? QStringLiteral("C&lear")
                              : k == 2 ? QStringLiteral("O&ff")
                                       : QStringLiteral("Off"),
                              [this, k] {
                                  Close_Function(k);
                                  Picked();
                              }));
        mix->addWidget(frame, k, 0);
        mix->addWidget(Label(Element("lbl_Function", k)), k, 1);
        if (k > 1)
            mix->addWidget(Button(
                               QStringLiteral("cmd_On%1").arg(k), QStringLiteral("On"),
                               [this, k] { Open_Function(k, true); }, QStringLiteral("Open this function")),
                           k, 2);
    }
    QStringList segments;
    for (const std::string& entry : Load_SegmentList(design))
        segments.append(To_Qt(entry));
    QComboBox* const segment = Choice(QStringLiteral("cmb_Segment"), segments,
                                      [segments](int k) { Pick_Segment(design, From_Qt(segments.at(k))); });
    Pick_Segment(design, "All");
    auto* const range = new QHBoxLayout;
    range->addWidget(new QLabel(QStringLiteral("&Segment")));
    qobject_cast<QLabel*>(range->itemAt(0)->widget())->setBuddy(segment);
    range->addWidget(segment);
    range->addStretch();
    auto* const buttons = new QHBoxLayout;
    buttons->addWidget(Button(QStringLiteral("cmd_Cancel"), QStringLiteral("< &Back"), [this] { reject(); }));
    buttons->addStretch();
    buttons->addWidget(
        Button(QStringLiteral("cmd_Help"), QStringLiteral("&Help"), [] { Open_Help(QStringLiteral("plots")); }));
    buttons->addStretch();
    buttons->addWidget(Button(QStringLiteral("cmd_Done"), QStringLiteral("&Next >"), [this] { accept(); }));
    Body().addLayout(methods);
    Body().addWidget(preset_frame);
    Body().addWidget(mix_frame);
    Body().addLayout(range);
    QLabel* const transform = Label(QStringLiteral("lbl_Transform"), To_Qt(Note_on_Transform(design)));
    transform->setWordWrap(true);
    transform->setVisible(!transform->text().isEmpty());
    Body().addWidget(transform);
    QLabel* const reason = Label(QStringLiteral("lbl_Reason"));
    reason->setWordWrap(true);
    Body().addWidget(reason);
    Body().addStretch();
    Foot().addLayout(buttons);
    Open_at({620, 400});
    for (int k = 2; k <= most; ++k)
        Open_Function(k, false);
    Use_Presets(!presets_.empty());
}

void frm_PlotSelect::Use_Presets(bool presets)
{
    Control<QRadioButton>(Element("opt_PrintSet", presets ? 0 : 1)).setChecked(true);
    Control<QRadioButton>(Element("opt_PrintSet", 0)).setEnabled(!presets_.empty());
    Control<QGroupBox>(QStringLiteral("fra_Preset")).setEnabled(presets);
    Control<QGroupBox>(QStringLiteral("fra_Mix")).setEnabled(!presets);
    if (presets) {
        Control<QComboBox>(QStringLiteral("cmb_Preset")).setCurrentIndex(-1);
        design.plot.Num_Sets = 0;
    }
    Picked();
}

void frm_PlotSelect::Open_Function(int k, bool open)
{
    if (k <= Functions_of_Style(style_).most)
        Control<QWidget>(QStringLiteral("fra_Function%1").arg(k)).setEnabled(open);
}

/// Takes the pick of a function away; all but the first close with it.
void frm_PlotSelect::Close_Function(int k)
{
    Control<QComboBox>(QStringLiteral("cmb_Var%1").arg(k)).setCurrentIndex(-1);
    Open_Function(k, k == 1);
}

std::vector<int> frm_PlotSelect::Picks() const
{
    std::vector<int> picks;
    for (int k = 1; k <= Functions_of_Style(style_).most; ++k) {
        const int index = Control<QComboBox>(QStringLiteral("cmb_Var%1").arg(k)).currentIndex();
        picks.push_back(index < 0 ? 0 : variables_.at(static_cast<std::size_t>(index)));
    }
    return picks;
}

void frm_PlotSelect::Picked()
{
    const bool presets = Control<QRadioButton>(Element("opt_PrintSet", 0)).isChecked();
    const Plot_Group& p = design.plot;
    std::vector<int> picks = Picks();
    bool ready = false;
    if (presets) {
        ready = p.Num_Sets >= Functions_of_Style(style_).least;
        for (std::size_t k = 0; k < picks.size(); ++k)
            picks[k] = static_cast<int>(k) < p.Num_Sets ? int{p.Plot_Vars(static_cast<int>(k) + 1)} : 0;
    } else {
        ready = Select_OK(design, style_, picks);
    }
    const std::string obstacle = Why_Not_Together(style_, picks);
    for (std::size_t k = 0; k < picks.size(); ++k)
        Control<QLabel>(Element("lbl_Function", static_cast<int>(k) + 1))
            .setText(picks[k] == 0 ? QString() : Name_of(picks[k]));
    Control<QLabel>(QStringLiteral("lbl_Reason")).setText(To_Qt(obstacle));
    Control<QPushButton>(QStringLiteral("cmd_Done")).setEnabled(ready && obstacle.empty());
}

frm_Plot::frm_Plot(int plot_style, QWidget* parent)
    : Screen(QStringLiteral("frm_Plot%1").arg(plot_style), QStringLiteral("Plot"), parent), style_(plot_style)
{
    QLabel* const header = Label(QStringLiteral("lbl_Header"), To_Qt(Plot_Header(design)));
    QLabel* const above = Label(QStringLiteral("lbl_Title"));
    above->setAlignment(Qt::AlignCenter);
    QFont bold = above->font();
    bold.setWeight(QFont::DemiBold);
    above->setFont(bold);
    auto* const charts = new QGridLayout;
    const int windows = paint::Windows_of(style_);
    const int columns = windows == 4 ? 2 : 1;
    for (int k = 0; k < windows; ++k) {
        charts_.push_back(new paint::Chart(design, Element("grf_Plot", k)));
        charts->addWidget(charts_.back(), 1 + k / columns, k % columns);
    }
    charts->addWidget(above, 0, 0, 1, columns);
    auto* const beside = new QWidget;
    auto* const side = new QVBoxLayout(beside);
    side->setContentsMargins({});
    const auto panel = [side](const char* name, const QString& title, const char* label, const Panel_Lines& lines) {
        if (lines.empty())
            return;
        auto* const box = new QGroupBox(title);
        box->setObjectName(QString::fromUtf8(name));
        box->setAutoFillBackground(true);
        auto* const grid = new QGridLayout(box);
        for (int k = 0; k < static_cast<int>(lines.size()); ++k) {
            grid->addWidget(new QLabel(To_Qt(lines[static_cast<std::size_t>(k)].first)), k, 0);
            grid->addWidget(Label(Element(label, k), To_Qt(lines[static_cast<std::size_t>(k)].second)), k, 1,
                            Qt::AlignRight);
        }
        side->addWidget(box);
    };
    panel("pnl_Left", QStringLiteral("Cam Basic Data"), "lbl_Left", Basic_Data(design));
    panel("pnl_Right", QStringLiteral("Cam Size Data"), "lbl_Right", Size_Data(design));
    const auto group = [side](const QString& title, const QList<QWidget*>& widgets) {
        auto* const box = new QGroupBox(title);
        auto* const row = new QGridLayout(box);
        for (int k = 0; k < widgets.size(); ++k)
            row->addWidget(widgets[k], k / 2, k % 2);
        side->addWidget(box);
    };
    const auto again = [this](bool) { Show_Looks(); };
    const auto checked = [](QCheckBox* box, bool on = true) {
        box->setChecked(on);
        return box;
    };
    const paint::Curve_Style usual = paint::Usual_Look(design, style_);
    group(QStringLiteral("Grid"), {checked(Check(QStringLiteral("chk_HGrid"), QStringLiteral("Horiz"), again)),
                                   checked(Check(QStringLiteral("chk_VGrid"), QStringLiteral("Vertic"), again))});
    group(QStringLiteral("Style"), {checked(Check(QStringLiteral("chk_Line"), QStringLiteral("Lines"), again),
                                            usual != paint::Curve_Style::sticks),
                                    checked(Check(QStringLiteral("chk_Sticks"), QStringLiteral("Fills"), again),
                                            usual != paint::Curve_Style::line)});
    QList<QWidget*> grounds;
    for (const auto& [k, caption, colour] :
         {std::tuple{0, "White", QColor(Qt::white)}, std::tuple{1, "Blue", QColor(0xDC, 0xE8, 0xF8)},
          std::tuple{2, "Gray", QColor(0xE2, 0xE2, 0xE2)}})
        grounds.append(Option(Element("opt_Back", k), QString::fromUtf8(caption), [this, ground = colour] {
            for (paint::Chart* const chart : charts_)
                chart->Set_Ground(ground);
        }));
    group(QStringLiteral("Background"), grounds);
    const auto boxes = [this](const QColor& colour) {
        return [this, colour] {
            for (const char* const name : {"pnl_Left", "pnl_Right"})
                if (auto* const box = findChild<QGroupBox*>(QString::fromUtf8(name))) {
                    QPalette tinted = box->palette();
                    tinted.setColor(QPalette::Window, colour);
                    tinted.setColor(QPalette::WindowText, Qt::black);
                    box->setPalette(tinted);
                }
        };
    };
    group(QStringLiteral("Panels"),
          {Option(Element("opt_color", 0), QStringLiteral("Cyan Boxes"), boxes(QColor(0xC8, 0xF4, 0xF4))),
           Option(Element("opt_color", 1), QStringLiteral("White Boxes"), boxes(Qt::white))});
    side->addStretch();
    auto* const buttons = new QHBoxLayout;
    const auto add = [buttons](QPushButton* button) { buttons->addWidget(button); };
    add(Button(
        QStringLiteral("cmd_Back"), QStringLiteral("< &Back"), [this] { reject(); },
        QStringLiteral("Pick other functions")));
    buttons->addStretch();
    add(Button(QStringLiteral("cmd_Replot"), QStringLiteral("&Replot"), [this] { Replot(); }));
    add(Copy_Button());
    add(Button(QStringLiteral("cmd_PlotPrint"), QStringLiteral("&Print"), [this] {
        if (!Refuse_Other_Units(design))
            paint::Print_Form(*this);
    }));
    buttons->addStretch();
    add(Button(QStringLiteral("cmd_PlotDone"), QStringLiteral("&Done"), [this] { accept(); }));
    auto* const row = new QHBoxLayout;
    row->addLayout(charts, 1);
    // The panels scroll by themselves, so that a small desktop shows the charts whole.
    QScrollArea* const panels = Scrolled(beside);
    panels->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    panels->setFixedWidth(beside->minimumSizeHint().width() + panels->verticalScrollBar()->sizeHint().width());
    row->addWidget(panels);
    Body().addWidget(header);
    Body().addLayout(row, 1);
    Foot().addLayout(buttons);
    constexpr int above_and_below = 120;  // of the panels: header and buttons
    Open_at({1020, std::max(660, beside->minimumSizeHint().height() + above_and_below)});
    Replot();
}

paint::Curve_Style frm_Plot::Look() const
{
    return paint::Look_of_Boxes(Control<QCheckBox>(QStringLiteral("chk_Line")).isChecked(),
                                Control<QCheckBox>(QStringLiteral("chk_Sticks")).isChecked());
}

/// Grid and graph style by their boxes; the part in view stays.
void frm_Plot::Show_Looks()
{
    const auto on = [this](const char* name) { return Control<QCheckBox>(QString::fromUtf8(name)).isChecked(); };
    for (paint::Chart* const chart : charts_) {
        chart->Set_Style(Look());
        chart->Set_Grid(on("chk_HGrid"), on("chk_VGrid"));
    }
}

void frm_Plot::Replot()
{
    Trap(From_Qt(objectName()) + ".Replot", [this] {
        auto& title = Control<QLabel>(QStringLiteral("lbl_Title"));
        title.setText(paint::Fill_Plot(design, charts_, style_, Look()));
        title.setVisible(!title.text().isEmpty());
    });
    Show_Looks();
}

void Run_Segment_Plot(int segment, QWidget* parent)
{
    const Plot_Group picks = design.plot;
    Pick_Segment(design, Load_SegmentList(design).at(static_cast<std::size_t>(segment)));  // the first entry is "All"
    constexpr std::array variables{var::S, var::V, var::A, var::J};
    Select_OK(design, style::four_windows, variables);
    {
        frm_Plot plot(style::four_windows, parent);
        plot.setWindowTitle(QStringLiteral("Segment %1").arg(segment));
        Run_Modal(plot);
    }
    design.plot = picks;
}

void Run_Plots(QWidget* parent)
{
    for (;;) {
        frm_PlotType type(parent);
        if (Run_Modal(type) != QDialog::Accepted)
            return;
        const int chosen = design.plot.Plot_Style;
        for (;;) {
            frm_PlotSelect select(chosen, parent);
            if (Run_Modal(select) != QDialog::Accepted)
                break;
            frm_Plot plot(chosen, parent);
            if (Run_Modal(plot) == QDialog::Accepted)
                return;
        }
    }
}

}  // namespace lobemax::screens
