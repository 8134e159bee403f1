// SPDX-License-Identifier: GPL-3.0-or-later
/// What a user waits for in windows, on Qt's offscreen platform: the first window, a redraw, typing in the table.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QCheckBox>
#include <QImage>
#include <QPainter>
#include <QPushButton>
#include <QSettings>
#include <QTemporaryDir>

#include "camgeom/cam_animation.h"
#include "camgeom/cam_drawing.h"
#include "core/startup.h"
#include "edit/examples.h"
#include "edit/rungs.h"
#include "files/example_designs.h"
#include "forms/input_form.h"
#include "motion/segments.h"
#include "paint/chart.h"
#include "paint/painter_surface.h"
#include "screens/desk.h"
#include "screens/frm_HomeScreen.h"
#include "screens/frm_InputData.h"
#include "screens/frm_SizeCam.h"
#include "screens/resources.h"

namespace lobemax {

using screens::design;

namespace {

void First_Window(benchmark::State& state)
{
    for (auto _ : state) {
        Sub_Main(design, "", {});
        screens::frm_HomeScreen home("");
        home.show();
        QApplication::processEvents();
        benchmark::DoNotOptimize(home.grab());
    }
}
BENCHMARK(First_Window)->Unit(benchmark::kMillisecond);

void Input_Screen(benchmark::State& state)
{
    Sub_Main(design, "", {});
    Open_Example(design, "Four Dwell");
    for (auto _ : state) {
        screens::frm_InputData table({});
        table.show();
        QApplication::processEvents();
    }
}
BENCHMARK(Input_Screen)->Unit(benchmark::kMillisecond);

void Typing_in_the_Table(benchmark::State& state)
{
    Sub_Main(design, "", {});
    Open_Example(design, "Four Dwell");
    screens::frm_InputData table({});
    table.show();
    auto& field = table.Control<screens::Entry>(screens::Element("txt_High", 0));
    for (auto _ : state) {
        field.typed("1");
        QApplication::processEvents();
    }
}
BENCHMARK(Typing_in_the_Table)->Unit(benchmark::kMillisecond);

/// An example of 2881 points, its motion calculated.
void Calculate_at_the_Finest_Step(const char* example)
{
    Sub_Main(design, "", {});
    Load_Example(design, example);
    Set_Step(design, 0.125);
    Calculate_Example(design);
}

/// Four charts of 2881 points, painted.
void Four_Charts(benchmark::State& state)
{
    Calculate_at_the_Finest_Step("Double Dwell");
    QWidget window;
    window.resize(900, 640);
    std::vector<paint::Chart*> charts;
    for (int k = 0; k < 4; ++k) {
        charts.push_back(new paint::Chart(design, QStringLiteral("grf"), &window));
        charts.back()->setGeometry(k % 2 * 450, k / 2 * 320, 450, 320);
    }
    window.show();
    const auto& rows = design.results.CalcData;
    for (auto _ : state) {
        for (int k = 0; k < 4; ++k)
            charts[static_cast<std::size_t>(k)]->Update(
                {paint::Row_Curve(QStringLiteral("S"), {}, rows.Points(var::Angle), rows.Points(var::S + k), 0, 2880)});
        QApplication::processEvents();
    }
}
BENCHMARK(Four_Charts)->Unit(benchmark::kMillisecond);

/// The sizing screen's drawing of a cam of 2881 points, painted.
void Cam_Drawing(benchmark::State& state)
{
    Calculate_at_the_Finest_Step("Oscillating");
    Run_Size(design);
    QImage picture(700, 700, QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state) {
        QPainter painter(&picture);
        paint::Painter_Surface surface(painter, picture.rect(), QApplication::palette());
        Draw_Cam_Preview(design, surface);
    }
}
BENCHMARK(Cam_Drawing)->Unit(benchmark::kMillisecond);

/// A frame of the animation of 2881 points, painted: four milliseconds at the most.
void Animation_Frame(benchmark::State& state, const char* example)
{
    Calculate_at_the_Finest_Step(example);
    Run_Size(design);
    QImage picture(700, 700, QImage::Format_ARGB32_Premultiplied);
    int point = 0;
    for (auto _ : state) {
        QPainter painter(&picture);
        paint::Painter_Surface surface(painter, picture.rect(), QApplication::palette());
        Anim_Frame(design, surface, point);
        point = (point + Anim_Stride(design)) % 2880;
    }
}
BENCHMARK_CAPTURE(Animation_Frame, translating, "Double Dwell")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Animation_Frame, arm, "Oscillating")->Unit(benchmark::kMillisecond);

/// The cam at rest with the follower all around.
void Follower_All_Around(benchmark::State& state)
{
    Calculate_at_the_Finest_Step("Double Dwell");
    Run_Size(design);
    design.cam.Show_Surface = design.cam.Show_Follower_Path = true;
    QImage picture(700, 700, QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state) {
        QPainter painter(&picture);
        paint::Painter_Surface surface(painter, picture.rect(), QApplication::palette());
        Anim_Rest(design, surface);
    }
}
BENCHMARK(Follower_All_Around)->Unit(benchmark::kMillisecond);

/// A changed value with Autocalc on: calculation, cam and both curves, painted.
void Changed_Value(benchmark::State& state)
{
    Calculate_at_the_Finest_Step("Double Dwell");
    Run_Size(design);
    screens::frm_SizeCam screen;
    screen.show();
    screen.Control<QCheckBox>(QStringLiteral("chk_Autocalc")).setChecked(true);
    screen.Control<QPushButton>(QStringLiteral("cmd_ShowData")).click();
    auto& field = screen.Control<screens::Entry>(QStringLiteral("txt_Prime"));
    QApplication::processEvents();
    int turn = 0;
    for (auto _ : state) {
        field.accepted(++turn % 2 == 0 ? "101" : "102");
        QApplication::processEvents();
    }
}
BENCHMARK(Changed_Value)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace lobemax

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QTemporaryDir settings;
    QSettings::setDefaultFormat(QSettings::IniFormat);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, settings.path());
    QApplication application(argc, argv);
    lobemax::screens::Load_Resources();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
