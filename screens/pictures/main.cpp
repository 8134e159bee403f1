// SPDX-License-Identifier: GPL-3.0-or-later
/// lobemax-pictures FOLDER [light|dark [WIDTHxHEIGHT]]: every screen on an example, at the scale and in the palette of
/// the run, on a desktop of that size, for looking at.
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QPushButton>
#include <QRadioButton>
#include <QSettings>
#include <QSlider>
#include <QStyleFactory>
#include <QTabWidget>
#include <QTemporaryDir>
#include <cmath>
#include <fstream>
#include <random>

#include "core/messages.h"
#include "core/startup.h"
#include "edit/conditions.h"
#include "edit/rungs.h"
#include "files/example_designs.h"
#include "motion/motion_programs.h"
#include "motion/polynomial.h"
#include "motion/segments.h"
#include "present/plot_selection.h"
#include "screens/dark_palette.h"
#include "screens/desk.h"
#include "screens/frm_Animate.h"
#include "screens/frm_Arcs.h"
#include "screens/frm_Bounds.h"
#include "screens/frm_Cad.h"
#include "screens/frm_CompCam.h"
#include "screens/frm_Continuity.h"
#include "screens/frm_Dynamics.h"
#include "screens/frm_Export_Question.h"
#include "screens/frm_FFT.h"
#include "screens/frm_Findings.h"
#include "screens/frm_HomeScreen.h"
#include "screens/frm_Import_data.h"
#include "screens/frm_InputData.h"
#include "screens/frm_Knots.h"
#include "screens/frm_Limits.h"
#include "screens/frm_Linkage.h"
#include "screens/frm_LinkageType.h"
#include "screens/frm_Linkplots.h"
#include "screens/frm_Lobe.h"
#include "screens/frm_MassProp.h"
#include "screens/frm_Model.h"
#include "screens/frm_ModelType.h"
#include "screens/frm_Plots.h"
#include "screens/frm_Poly.h"
#include "screens/frm_Preferences.h"
#include "screens/frm_PrintData.h"
#include "screens/frm_PrintSelect.h"
#include "screens/frm_Quit.h"
#include "screens/frm_Report.h"
#include "screens/frm_SizeCam.h"
#include "screens/frm_Stress.h"
#include "screens/frm_Title.h"
#include "screens/help_viewer.h"
#include "screens/resources.h"

namespace {

using namespace lobemax;
using namespace lobemax::screens;

QString folder;

void Take(QWidget& window, const QString& name)
{
    window.show();
    for (int k = 0; k < 5; ++k)
        QApplication::processEvents();
    window.grab().save(folder + QLatin1Char('/') + name + QStringLiteral(".png"));
    window.hide();
}

/// The drawing of the cam: at rest, turned, with each path, its conjugate, its summary.
void Take_Animation(const QString& name)
{
    frm_Animate animation;
    Take(animation, name);
    animation.Control<QSlider>(QStringLiteral("hsc_step")).setValue(design.motion.Max_Data_Points_used / 4);
    Take(animation, name + QStringLiteral("_turned"));
    for (const char* const path : {"Chk_Follower", "chk_Cutter", "chk_Camkey"}) {
        animation.Control<QCheckBox>(QString::fromUtf8(path)).click();
        Take(animation, name + QLatin1Char('_') + QString::fromUtf8(path));
    }
    animation.Control<QCheckBox>(QStringLiteral("chk_Camkey")).click();
    animation.Control<QRadioButton>(Element("opt_Show", 2)).click();
    Take(animation, name + QStringLiteral("_conjugate"));
    animation.Control<QRadioButton>(Element("opt_Show", 1)).click();
    Take(animation, name + QStringLiteral("_summary"));
}

/// A rise by a polynomial or a spline of six conditions, a dwell, a fall, a dwell.
void Make_Conditions(char kind)
{
    Motion_Group& m = design.motion;
    Pick_Motion(design, 1, kind);
    m.Start_Value(1) = "0";
    m.End_Value(1) = "25";
    for (const int row : {0, 9})
        for (const int order : {1, 2})
            Bound_Text(design, 1, row, order) = "0";
    Bound_Text(design, 1, 4, 0) = kind == 'S' ? "12" : "";
    m.T_boundary_cond(1, 4) = kind == 'S' ? "45" : "";
    Set_No_of_Conditions(design, 1, kind == 'S' ? "7" : "6");
}

/// The linkage screens: without a train, then with those of the examples.
void Take_Linkages()
{
    Open_Example(design, "Oscillating");
    Run_Size(design);
    {
        frm_LinkageType type;
        Take(type, QStringLiteral("frm_LinkageType"));
        frm_Linkage empty;
        Take(empty, QStringLiteral("frm_Linkage_empty"));
    }
    for (const char* const example : {"4-bar Linkage", "6-bar Linkage", "4-bar Slider", "6-bar Slider"}) {
        const QString name = QString::fromUtf8(example).remove(QLatin1Char(' '));
        Open_Example(design, example);
        Run_Size(design);
        frm_Linkage train;
        Take(train, QStringLiteral("frm_Linkage_") + name);
        Run_Linkage(design);
        for (int link = 2; link <= Max_Links; ++link) {
            design.linkage.Mass_of_link(link) = 0.5;
            design.linkage.Inertia_of_link(link) = 0.002;
            design.linkage.CGx_of_link(link) = 60.0;
            design.linkage.Stiffness_of_link(link) = 1E6;
        }
        frm_MassProp masses;
        masses.Control<QPushButton>(QStringLiteral("cmd_Calc")).click();
        Take(masses, QStringLiteral("frm_MassProp_") + name);
        frm_Linkplots plots;
        Take(plots, QStringLiteral("frm_Linkplots_") + name);
    }
}

/// A cam with an offset whose roller is too large for it, and what is told of it.
void Take_Findings()
{
    Open_Example(design, "Double Dwell");
    design.cam.Prime_Rad = 42;
    design.cam.Follow_Rad = 21;
    design.cam.Offset = 8;
    Run_Size(design);
    Run_Forces(design);
    Put_Materials(design);
    Contact_Field refused{};
    Run_Stress(design, refused);
    Limits limits;
    limits[Limit::Contact_Force] = 100.0;
    limits[Limit::Torque] = 20.0;
    limits[Limit::Sigma] = 900.0;
    Set_Desk_Limits(limits);
    {
        frm_HomeScreen home("");
        Take(home, QStringLiteral("frm_HomeScreen_findings"));
    }
    frm_Findings findings(std::nullopt);
    Take(findings, QStringLiteral("frm_Findings"));
    frm_Limits form;
    Take(form, QStringLiteral("frm_Limits"));
    frm_Cad cad;
    for (int kind = 0; kind < Cad_Kinds; ++kind) {
        auto& kinds = cad.Control<QComboBox>(QStringLiteral("cmb_Kind"));
        kinds.setCurrentIndex(kind);
        emit kinds.activated(kind);
        Take(cad, QStringLiteral("frm_Cad_") +
                      QString::fromStdString(std::string(Entry_of(static_cast<Cad_Kind>(kind)).name)));
    }
    {
        frm_SizeCam size;
        size.Control<QCheckBox>(QStringLiteral("chk_True")).click();
        Take(size, QStringLiteral("frm_SizeCam_findings"));
        size.Control<Entry>(QStringLiteral("txt_Prime")).accepted("-1");
        Take(size, QStringLiteral("frm_SizeCam_findings_pending"));
    }
    Run_Size(design);
    {
        frm_Animate animation;
        Take(animation, QStringLiteral("frm_Animate_findings"));
    }
    frm_Dynamics dynamics;
    Take(dynamics, QStringLiteral("frm_Dynamics_findings_closed"));
    dynamics.Control<QPushButton>(QStringLiteral("cmd_Calc")).click();
    dynamics.Control<QCheckBox>(QStringLiteral("chk_True")).click();
    Take(dynamics, QStringLiteral("frm_Dynamics_findings"));
    frm_Stress stress;
    stress.Control<QCheckBox>(QStringLiteral("chk_True")).click();
    Take(stress, QStringLiteral("frm_Stress_findings"));
    Set_Desk_Limits({});
    design.cam.Follow_Rad = 34;
    Run_Size(design);
    frm_Export_Question question(design, Desk_Check());
    Take(question, QStringLiteral("frm_Export_Question"));
    frm_Findings undercut(std::nullopt);
    Take(undercut, QStringLiteral("frm_Findings_undercut"));
    frm_SizeCam size;
    Take(size, QStringLiteral("frm_SizeCam_undercut"));
}

/// A measured rise and return, read and fitted within a bound.
void Import_Lobe(frm_Import_data& screen)
{
    const QTemporaryDir measured;
    const std::string path = measured.filePath(QStringLiteral("lobe.txt")).toStdString();
    {
        std::ofstream file(path);
        std::mt19937 random(3);
        std::normal_distribution<double> error(0.0, 0.001);
        for (int i = 0; i < 360; ++i)
            file << i << " " << 5 - 5 * std::cos(i * 3.14159265 / 180) + error(random) << "\n";
    }
    Host host;
    host.open_dialog = [&](const File_Dialog&) { return std::optional(path); };
    const Host before = Install_Host(host);
    for (const auto& [name, text] : {std::pair{"txt_Omega", "120"}, std::pair{"txt_Base", "30"}}) {
        auto& entry = screen.Control<Entry>(QString::fromUtf8(name));
        entry.setText(QString::fromUtf8(text));
        entry.accepted(text);
    }
    screen.Control<QCheckBox>(QStringLiteral("chk_Close")).click();
    screen.Control<QPushButton>(QStringLiteral("cmd_Import")).click();
    screen.Control<QRadioButton>(QStringLiteral("opt_Interpolate(3)")).click();
    auto& bound = screen.Control<Entry>(QStringLiteral("txt_Bound"));
    bound.setText(QStringLiteral("0.004"));
    bound.accepted("0.004");
    screen.Control<QPushButton>(QStringLiteral("cmd_Calc")).click();
    Install_Host(before);
}

}  // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    if (argc < 2)
        return 2;
    const QTemporaryDir settings;  // as the user's first run finds it
    QSettings::setDefaultFormat(QSettings::IniFormat);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, settings.path());
    folder = QString::fromLocal8Bit(argv[1]);
    QDir().mkpath(folder);
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    if (argc > 2 && QByteArray(argv[2]) == "dark")
        Use_Dark_Palette();
    const QList<QByteArray> sides = QByteArray(argc > 3 ? argv[3] : "1920x1080").split('x');
    const QSize desktop(sides.first().toInt(), sides.last().toInt());
    Use_Available_Geometry([desktop](const QWidget&) { return QRect(QPoint(), desktop); });
    Load_Resources();
    Install_Host({});
    Sub_Main(design, "", {});
    {
        frm_Title title;
        Take(title, QStringLiteral("frm_Title"));
        frm_Quit quit;
        Take(quit, QStringLiteral("frm_Quit"));
        frm_Preferences preferences({});
        Take(preferences, QStringLiteral("frm_Preferences"));
        frm_InputData empty({});
        Take(empty, QStringLiteral("frm_InputData_empty"));
    }
    {
        frm_HomeScreen home("");
        Take(home, QStringLiteral("frm_HomeScreen_empty"));
        Open_Example(design, "Double Dwell");
        home.Refresh();
        Take(home, QStringLiteral("frm_HomeScreen"));
    }
    {
        frm_InputData input({});
        Take(input, QStringLiteral("frm_InputData"));
        frm_Continuity continuity;
        Take(continuity, QStringLiteral("frm_Continuity"));
        frm_Lobe lobe;
        Take(lobe, QStringLiteral("frm_Lobe"));
        frm_FFT fft;
        auto& list = fft.Control<QComboBox>(QStringLiteral("cmb_Var1"));
        list.setCurrentIndex(2);
        emit list.activated(2);
        Take(fft, QStringLiteral("frm_FFT"));
    }
    {
        frm_Arcs none;
        Take(none, QStringLiteral("frm_Arcs_empty"));
        frm_Arcs arcs({.txt_Base = "20", .txt_Flank = "60", .txt_Nose = "5", .txt_Lift = "8", .txt_Roller = "9"});
        Take(arcs, QStringLiteral("frm_Arcs"));
        frm_Import_data import;
        Take(import, QStringLiteral("frm_Import_data_empty"));
        Import_Lobe(import);
        Take(import, QStringLiteral("frm_Import_data"));
        import.Control<QPushButton>(QStringLiteral("cmd_Derivs")).click();
        Take(import, QStringLiteral("frm_Import_data_derivatives"));
        import.Control<QPushButton>(QStringLiteral("cmd_Functions")).click();
        Take(import, QStringLiteral("frm_Import_data_functions"));
        Open_Example(design, "Double Dwell");
    }
    {
        frm_SizeCam size;
        Take(size, QStringLiteral("frm_SizeCam"));
        auto& list = size.Control<QPushButton>(QStringLiteral("cmd_ShowData"));
        list.click();
        Take(size, QStringLiteral("frm_SizeCam_data"));
        frm_Dynamics dynamics;
        dynamics.Control<QPushButton>(QStringLiteral("cmd_Calc")).click();
        Take(dynamics, QStringLiteral("frm_Dynamics"));
        frm_ModelType type;
        Take(type, QStringLiteral("frm_ModelType"));
        for (const int choice : {0, 2}) {
            Choose_Model_Type(design, choice);
            frm_Model model;
            model.Control<QPushButton>(QStringLiteral("cmd_Calc")).click();
            Take(model, QStringLiteral("frm_Model%1").arg(design.dynamics.Model_Type));
            if (choice == 2) {
                model.Control<QCheckBox>(QStringLiteral("chk_Polydyne")).click();
                Take(model, QStringLiteral("frm_Model_polydyne"));
                frm_SizeCam polydyne;
                Take(polydyne, QStringLiteral("frm_SizeCam_polydyne"));
                Give_Up_Polydyne(design);
            }
        }
        frm_CompCam compensation;
        compensation.Control<QPushButton>(QStringLiteral("cmd_Calc")).click();
        Take(compensation, QStringLiteral("frm_CompCam"));
        compensation.Control<QTabWidget>(QStringLiteral("tab_Results")).setCurrentIndex(1);
        Take(compensation, QStringLiteral("frm_CompCam_data"));
        frm_Stress stress;
        Take(stress, QStringLiteral("frm_Stress"));
    }
    {
        frm_PlotType type;
        Take(type, QStringLiteral("frm_PlotType"));
        for (const auto& [plot_style, variables] :
             {std::pair{1, std::vector<int>{1, 2}}, std::pair{2, std::vector<int>{5, 6}},
              std::pair{3, std::vector<int>{1, 2, 3, 4}}, std::pair{4, std::vector<int>{54, 57}}}) {
            frm_PlotSelect select(plot_style);
            Take(select, QStringLiteral("frm_PlotSelect%1").arg(plot_style));
            Select_OK(design, plot_style, variables);
            frm_Plot plot(plot_style);
            Take(plot, QStringLiteral("frm_Plot%1").arg(plot_style));
        }
    }
    {
        frm_PrintSelect select;
        Take(select, QStringLiteral("frm_PrintSelect"));
        frm_PrintData table(Segment_Print_Choice(design, 1));
        Take(table, QStringLiteral("frm_PrintData"));
        frm_Report report;
        Take(report, QStringLiteral("frm_Report"));
    }
    for (const char* const example : {"Single Dwell", "Flat Follower", "Four Dwell", "Oscillating"}) {
        Open_Example(design, example);
        frm_SizeCam size;
        const QString name = QString::fromUtf8(example).remove(QLatin1Char(' '));
        Take(size, QStringLiteral("frm_SizeCam_") + name);
        Take_Animation(QStringLiteral("frm_Animate_") + name);
    }
    Take_Findings();
    if (argc > 4)
        return 0;
    Take_Linkages();
    Open_Example(design, "Double Dwell");
    Make_Conditions('P');
    {
        frm_Bounds bounds(1);
        Take(bounds, QStringLiteral("frm_Bounds"));
        Calc_Segment(design, 0);
        frm_Poly poly(1);
        Take(poly, QStringLiteral("frm_Poly"));
    }
    Make_Conditions('S');
    {
        Calc_Segment(design, 0);
        frm_Knots knots(1);
        Take(knots, QStringLiteral("frm_Knots"));
    }
    {
        Help_Viewer help;
        Take(help, QStringLiteral("frm_Help"));
        help.Show_Page(QStringLiteral("laws"));
        Take(help, QStringLiteral("frm_Help_laws"));
    }
    return 0;
}
