// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/frm_HomeScreen.h"

#include <QActionGroup>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QFileInfo>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QPainter>
#include <QPushButton>
#include <QScrollArea>
#include <QSettings>
#include <QTimer>
#include <QVBoxLayout>
#include <array>
#include <chrono>
#include <utility>

#include "core/text.h"
#include "core/units.h"
#include "edit/examples.h"
#include "edit/unsaved.h"
#include "files/example_designs.h"
#include "files/model_file.h"
#include "files/preferences.h"
#include "files/recovery.h"
#include "files/run_record.h"
#include "forms/findings_form.h"
#include "forms/home_commands.h"
#include "forms/preference_choice.h"
#include "paint/chart.h"
#include "paint/plot_charts.h"
#include "present/plot_selection.h"
#include "screens/check_mark.h"
#include "screens/desk.h"
#include "screens/frm_Animate.h"
#include "screens/frm_Cad.h"
#include "screens/frm_Dynamics.h"
#include "screens/frm_Export_Question.h"
#include "screens/frm_FFT.h"
#include "screens/frm_Import_data.h"
#include "screens/frm_Input_Session.h"
#include "screens/frm_Limits.h"
#include "screens/frm_LinkageType.h"
#include "screens/frm_Linkplots.h"
#include "screens/frm_Lobe.h"
#include "screens/frm_ModelType.h"
#include "screens/frm_Plots.h"
#include "screens/frm_Preferences.h"
#include "screens/frm_PrintSelect.h"
#include "screens/frm_Quit.h"
#include "screens/frm_SizeCam.h"
#include "screens/frm_Stress.h"
#include "screens/help_viewer.h"
#include "screens/screen.h"
#include "screens/status_panel.h"

namespace lobemax::screens {

namespace {

constexpr int most_recent = 8;
constexpr qint64 least_interval = 5000;  // of recoveries, milliseconds
constexpr std::chrono::minutes autosave_interval{2};

struct Shortcut {
    const char* action;
    QKeySequence::StandardKey key;
};

constexpr std::array shortcuts{Shortcut{"mnu_New", QKeySequence::New}, Shortcut{"mnu_Open", QKeySequence::Open},
                               Shortcut{"mnu_Save", QKeySequence::Save}, Shortcut{"mnu_Quit", QKeySequence::Quit}};

/// A place in the help for each button that has one.
QString Help_of(Home_Button button)
{
    using enum Home_Button;
    switch (button) {
    case Input:
        return QStringLiteral("input");
    case Size:
        return QStringLiteral("sizing");
    case Draw:
        return QStringLiteral("animation");
    case Force:
        return QStringLiteral("dynamics");
    case Stress:
        return QStringLiteral("stress");
    case Linkage:
        return QStringLiteral("linkage");
    case Plot:
        return QStringLiteral("plots");
    case Print:
        return QStringLiteral("printing");
    default:
        return QStringLiteral("home");
    }
}

/// Circles and squares to judge the screen's proportions by.
class Circles : public Screen {
public:
    explicit Circles(QWidget* parent) : Screen(QStringLiteral("frm_Circles"), QStringLiteral("Circles"), parent)
    {
        Open_at({420, 420});
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(palette().color(QPalette::Text), 1.4));
        const double side = std::min(width(), height());
        const double across = Circle_Width(design);
        for (const double share : {0.9, 0.6, 0.3}) {
            const double r = side * share / 2;
            painter.drawEllipse(QPointF(width() / 2.0, height() / 2.0), r * across, r);
        }
        painter.drawRect(QRectF(width() / 2.0 - side * 0.45 * across, height() / 2.0 - side * 0.45, side * 0.9 * across,
                                side * 0.9));
    }
};

/// The design in a few lines.
QString Design_Text()
{
    const Motion_Group& m = design.motion;
    const Cam_Group& c = design.cam;
    const std::string& length = Words_of_Units(design.identity.WhichUnit).length;
    const auto number = [](double value, int decimals) { return To_Qt(Trim(FNRoundStr(design, value, decimals))); };
    QString text = QStringLiteral("<b>%1</b>").arg(To_Qt(design.identity.Model_Name).toHtmlEscaped());
    if (!design.flags.Calculated)
        return text + QStringLiteral(
                          "<br>Nothing is calculated yet. Press <i>Input</i> to type a motion, open a model, "
                          "or take an example.");
    text += QStringLiteral("<br>%1 segments, lift %2 %3, %4 rpm, step %5 deg")
                .arg(int{m.No_of_segments})
                .arg(number(m.MaxLift, 3), To_Qt(design.plot.Var_Unit(var::S)), number(m.Shaft_speed * 30.0 / PI, 2),
                     number(m.Deltatheta, 3));
    text += QStringLiteral("<br>%1 cam, %2 %3 follower")
                .arg(To_Qt(c.Camtype), c.Translating ? QStringLiteral("translating") : QStringLiteral("oscillating"),
                     c.Followtype == 2 ? QStringLiteral("flat") : QStringLiteral("roller"));
    if (design.flags.Sized)
        text += QStringLiteral("<br>Prime radius %1 %2, pressure angle %3 to %4 deg, smallest curvature %5 %6")
                    .arg(number(c.Prime_Rad, 2), To_Qt(length), number(c.Phi_Min, 1), number(c.Phi_Max, 1),
                         number(c.Rho_Smallest, 2), To_Qt(design.plot.Var_Unit(var::Rho)));
    return text;
}

}  // namespace

frm_HomeScreen::frm_HomeScreen(std::string folder) : folder_(std::move(folder))
{
    setObjectName(QStringLiteral("frm_HomeScreen"));
    setWindowIcon(QIcon(QStringLiteral(":/lobemax.svg")));
    setAcceptDrops(true);
    Make_Menus();
    QWidget* const center = Make_Center();
    setCentralWidget(Scrolled(center));
    Order_Tabs(*center);
    Host host = Installed_Host();
    host.refresh = [this] { Refresh(); };
    host.show_home = [this] {
        raise();
        activateWindow();
    };
    before_ = Install_Host(std::move(host));
    autosave_ = new QTimer(this);
    connect(autosave_, &QTimer::timeout, this, [this] { Keep_Recovery(); });
    autosave_->start(autosave_interval);
    soon_ = new QTimer(this);
    soon_->setSingleShot(true);
    connect(soon_, &QTimer::timeout, this, [this] { Keep_Recovery(); });
    On_Step([this] {  // at once, but not more often than every five seconds
        if (!kept_.isValid() || kept_.elapsed() >= least_interval)
            Keep_Recovery();
        else if (!soon_->isActive())
            soon_->start(static_cast<int>(least_interval - kept_.elapsed()));
    });
    const QByteArray place = QSettings().value(QStringLiteral("places/frm_HomeScreen")).toByteArray();
    if (place.isEmpty() || !restoreGeometry(place))
        resize(860, 560);
    Set_Full_Screen(design.run.Full_Screen);
    Refresh();
}

frm_HomeScreen::~frm_HomeScreen()
{
    QSettings().setValue(QStringLiteral("places/frm_HomeScreen"), saveGeometry());
    On_Step({});
    Host host = Installed_Host();
    host.refresh = before_.refresh;
    host.show_home = before_.show_home;
    Install_Host(std::move(host));
}

QAction* frm_HomeScreen::Add_Action(QMenu& menu, const QString& name, const QString& caption,
                                    std::function<void()> work)
{
    QAction* const action = menu.addAction(caption);
    action->setObjectName(name);
    On_Pick(action, this, std::move(work));
    actions_[From_Qt(name)] = action;
    return action;
}

void frm_HomeScreen::Make_Menus()
{
    std::map<std::string, QMenu*> menus;
    const auto menu_named = [&](std::string_view title) {
        QMenu*& menu = menus[std::string(title)];
        if (menu == nullptr) {
            menu = menuBar()->addMenu(To_Qt(title));
            menu->setToolTipsVisible(true);
        }
        return menu;
    };
    for (const Menu_Entry& entry : Home_Menus()) {
        QMenu* menu = menu_named(entry.menu);
        if (entry.name == "mnu_OpenExample") {
            QMenu* const examples = menu->addMenu(To_Qt(entry.caption));
            examples->setObjectName(To_Qt(entry.name));
            for (const std::string_view name : Example_Names)
                On_Pick(examples->addAction(To_Qt(name)), this, [this, name] { Build_Example(std::string(name)); });
            recent_ = menu->addMenu(QStringLiteral("Open &Recent"));
            recent_->setObjectName(QStringLiteral("mnu_Recent"));
            connect(recent_, &QMenu::aboutToShow, this, [this] { Show_Recent(); });
            continue;
        }
        if (!entry.submenu.empty()) {
            QMenu*& submenu = menus[std::string(entry.menu) + "/" + std::string(entry.submenu)];
            if (submenu == nullptr) {
                submenu = menu->addMenu(To_Qt(entry.submenu));
                submenu->setObjectName(To_Qt(Submenu_Name(entry.submenu)));
            }
            menu = submenu;
        }
        const std::string name(entry.name);
        Add_Action(*menu, To_Qt(entry.name), To_Qt(entry.caption), [this, name] { Run_Action(name); });
    }
    auto* const edit = new QMenu(QStringLiteral("&Edit"), this);
    edit->setObjectName(QStringLiteral("mnu_Edit"));
    menuBar()->insertMenu(menuBar()->actions().value(1), edit);
    Add_Action(*edit, QStringLiteral("mnu_Undo"), QStringLiteral("&Undo"), [this] {
        if (Desk_History().Undo())
            Refresh();
    })->setShortcut(QKeySequence::Undo);
    Add_Action(*edit, QStringLiteral("mnu_Redo"), QStringLiteral("&Redo"), [this] {
        if (Desk_History().Redo())
            Refresh();
    })->setShortcut(QKeySequence(QStringLiteral("Ctrl+Shift+Z")));
    QMenu* const file = menu_named("&File");
    QMenu* const exports = file->addMenu(QStringLiteral("E&xport"));
    exports->setObjectName(QStringLiteral("mnu_Export"));
    for (const Export_Entry& entry : Export_Menu())
        Add_Action(*exports, To_Qt(entry.name), To_Qt(entry.caption), [this, entry] {
            const bool truth = actions_.at("mnu_True_profile")->isChecked();
            Export_from_Screen(design, entry.name, this, truth ? Profile_Rows::truth : Profile_Rows::program);
            Refresh();
        });
    exports->addSeparator();
    QAction* const truth = Add_Action(*exports, QStringLiteral("mnu_True_profile"), To_Qt(True_Profile_Caption), [] {});
    truth->setCheckable(true);
    truth->setToolTip(To_Qt(True_Profile_Tip));
    exports->setToolTipsVisible(true);
    Add_Action(*file, QStringLiteral("mnu_linkagedata"), QStringLiteral("&Linkage Data..."), [this] {
        frm_Linkplots plots(this);
        Run_Modal(plots);
    });
    file->addSeparator();
    Add_Action(*file, QStringLiteral("mnu_Quit"), QStringLiteral("&Quit"), [this] { Quit(); });
    auto* const units = new QActionGroup(this);
    for (int code = First_Unit_System; code <= Last_Unit_System; ++code) {
        QAction* const action = actions_.at("mnu_pick(" + std::to_string(code) + ")");
        action->setCheckable(true);
        units->addAction(action);
    }
    for (const char* const name : {"mnu_USA", "mnu_Europe", "mnu_Sec_Deg(1)", "mnu_Sec_Deg(2)", "mnu_Sec_Deg(3)",
                                   "mnu_Aspect", "mnu_FullScreen", "mnu_StandardSize"})
        actions_.at(name)->setCheckable(true);
    QMenu* const help = menuBar()->addMenu(QStringLiteral("&Help"));
    for (const Help_Page& page : Help_Pages()) {
        const QString name = QString::fromUtf8(page.name);
        Add_Action(*help, QStringLiteral("mnu_Help_") + name, QString::fromUtf8(page.title),
                   [name] { Open_Help(name); });
    }
    for (const auto& [name, key] : shortcuts)
        actions_.at(name)->setShortcut(key);
    actions_.at("mnu_Help_home")->setShortcut(QKeySequence::HelpContents);
}

QWidget* frm_HomeScreen::Make_Center()
{
    auto* const center = new QWidget;
    auto* const grid = new QGridLayout(center);
    grid->setContentsMargins(16, 14, 16, 10);
    grid->setHorizontalSpacing(18);
    grid->setVerticalSpacing(10);
    auto* const column = new QVBoxLayout;
    column->setSpacing(7);
    for (int b = 0; b < Home_Button_Count; ++b) {
        const auto button = static_cast<Home_Button>(b);
        const Home_Button_Entry& entry = Home_Button_at(button);
        QPushButton* const control = Button(
            To_Qt(entry.name), To_Qt(entry.caption), [this, button] { Press(button); }, To_Qt(entry.tip));
        control->setMinimumSize(150, 34);
        control->setWhatsThis(Help_of(button));
        if (button == Home_Button::Quit)
            column->addStretch();
        column->addWidget(control);
        buttons_.append(control);
    }
    compcam_ = Label(QStringLiteral("pnl_compcam"), To_Qt(Compcam_Panel_Text));
    compcam_->setWordWrap(true);
    compcam_->setFrameShape(QFrame::Box);
    compcam_->setMargin(8);
    design_ = Label(QStringLiteral("lbl_Design"));
    design_->setTextFormat(Qt::RichText);
    design_->setWordWrap(true);
    design_->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    preview_ = new paint::Chart(design, QStringLiteral("grf_Preview"));
    preview_->Set_Axis_Titles(QStringLiteral("Cam Angle (Deg)"), {});
    status_ = new Status_Panel;
    mark_ = new Check_Mark(std::nullopt, [this] { Open_Findings(); });
    mark_->setWhatsThis(QStringLiteral("findings"));
    auto* const right = new QVBoxLayout;
    right->addWidget(compcam_);
    right->addWidget(design_);
    right->addWidget(preview_, 1);
    grid->addLayout(column, 0, 0);
    grid->addLayout(right, 0, 1);
    auto* const mark = new QHBoxLayout;
    mark->addWidget(mark_);
    mark->addStretch();
    grid->addLayout(mark, 1, 0, 1, 2);
    grid->addWidget(status_, 2, 0, 1, 2);
    grid->setColumnStretch(1, 1);
    return center;
}

void frm_HomeScreen::Refresh()
{
    const Home_View view = Home_Activate(design);
    for (int b = 0; b < buttons_.size(); ++b)
        buttons_[b]->setEnabled(view.buttons[static_cast<std::size_t>(b)]);
    for (const Menu_Entry& entry : Home_Menus())
        if (const auto action = actions_.find(std::string(entry.name)); action != actions_.end())
            action->second->setEnabled(entry.enabled(design));
    const auto exports = Export_Menu();
    for (std::size_t i = 0; i < exports.size(); ++i)
        actions_.at(std::string(exports[i].name))->setEnabled(view.export_entries[i]);
    for (int code = First_Unit_System; code <= Last_Unit_System; ++code)
        actions_.at("mnu_pick(" + std::to_string(code) + ")")->setChecked(view.unit_system == code);
    for (int base = 1; base <= 3; ++base)
        actions_.at("mnu_Sec_Deg(" + std::to_string(base) + ")")->setChecked(design.motion.Time_Base == base);
    actions_.at("mnu_USA")->setChecked(design.identity.Number_Format == "USA");
    actions_.at("mnu_Europe")->setChecked(design.identity.Number_Format == "Europe");
    actions_.at("mnu_Aspect")->setChecked(design.run.Aspect_Flag);
    actions_.at("mnu_FullScreen")->setChecked(design.run.Full_Screen);
    actions_.at("mnu_StandardSize")->setChecked(!design.run.Full_Screen);
    actions_.at("mnu_linkagedata")->setEnabled(view.linkage_data_entry);
    compcam_->setVisible(view.compcam_panel);
    status_->Refresh();
    mark_->setVisible(design.flags.Calculated);
    mark_->Refresh();
    Show_Design();
    History& history = Desk_History();
    Show_Undo(*actions_.at("mnu_Undo"), *actions_.at("mnu_Redo"));
    actions_.at("mnu_Undo")->setEnabled(history.May_Undo());
    actions_.at("mnu_Redo")->setEnabled(history.May_Redo());
    setWindowTitle(To_Qt(design.run.Program_Title) + QStringLiteral("   ") + To_Qt(design.identity.Model_Name) +
                   QStringLiteral("[*]"));
    setWindowModified(Unsaved(design));
}

void frm_HomeScreen::Show_Design()
{
    design_->setText(Design_Text());
    preview_->setVisible(design.flags.Calculated);
    if (!design.flags.Calculated)
        return;
    paint::Show_Cycle(design, *preview_, var::S);
}

void frm_HomeScreen::Run_Action(const std::string& name)
{
    if (name == "mnu_New") {
        if (File_New(design))
            Desk_History().Start_Anew();
    } else if (name == "mnu_Open") {
        if (Open_Model(design))
            Remember(design.identity.File_Name);
        Desk_History().Start_Anew();
    } else if (name == "mnu_Save") {
        if (Save_Model(design))
            Remember(design.identity.File_Name);
    } else if (name == "mnu_Plus") {
        if (Save_As_Plus(design))
            Remember(design.identity.File_Name);
    } else if (name == "mnu_V8") {
        Save_As_V8(design);
    } else if (name == "mnu_V7") {
        Save_As_V7(design);
    } else if (name == "mnu_Import") {
        Run_Import(this);
    } else if (name.starts_with("mnu_pick(")) {
        Change_Units_from_Home(design, name.at(9) - '0');
    } else if (name.starts_with("mnu_Sec_Deg(")) {
        Change_Time_Base_from_Home(design, name.at(12) - '0');
    } else if (name == "mnu_USA") {
        Change_Number_Format(design, "USA");
    } else if (name == "mnu_Europe") {
        Change_Number_Format(design, "Europe");
    } else if (name == "mnu_Recalculate") {
        Recalculate_from_Home(design);
    } else if (name == "mnu_Lobe") {
        frm_Lobe lobe(this);
        Run_Modal(lobe);
    } else if (name == "mnu_Findings") {
        Open_Findings();
    } else if (name == "mnu_Limits") {
        frm_Limits limits(this);
        Run_Modal(limits);
    } else if (name == "mnu_Cad") {
        frm_Cad cad(this);
        Run_Modal(cad);
        Refresh();
        Go_to_Chosen();
    } else if (name == "mnu_CalcFFT") {
        Fourier();
    } else if (name == "mnu_FullScreen") {
        Set_Full_Screen(true);
    } else if (name == "mnu_StandardSize") {
        Set_Full_Screen(false);
    } else if (name == "mnu_Aspect") {
        design.run.Aspect_Flag = !design.run.Aspect_Flag;
    } else if (name == "mnu_Circles") {
        Circles circles(this);
        Run_Modal(circles);
    } else if (name == "mnu_Preferences") {
        Preferences();
    } else {
        for (const Menu_Entry& entry : Home_Menus())
            if (entry.name == name)
                Build_Example(std::string(entry.caption));
    }
    Keep_Recovery();
    Refresh();
}

void frm_HomeScreen::Build_Example(const std::string& caption)
{
    if (May_Build_Example(design) && May_Reset(design)) {
        Open_Example(design, caption);
        Desk_History().Start_Anew();
    }
    Refresh();
}

void frm_HomeScreen::Press(Home_Button button)
{
    using enum Home_Button;
    if (!May_Open_Rung(design, button))
        return;
    switch (button) {
    case Quit:
        this->Quit();
        return;
    case Input:
        if (May_Open_Input(design))
            Run_Input_Session(this);
        break;
    case Size:
        Open_Screen<frm_SizeCam>();
        break;
    case Draw:
        Open_Screen<frm_Animate>();
        break;
    case Force:
        Open_Screen<frm_Dynamics>();
        break;
    case Stress:
        Open_Screen<frm_Stress>();
        break;
    case Model:
        if (May_Open_Vibration(design))
            Run_Vibration_Screens(this);
        break;
    case Plot:
        Run_Plots(this);
        break;
    case Print: {
        frm_PrintSelect screen(this);
        Run_Modal(screen);
        break;
    }
    case Linkage:
        if (May_Open_Linkage(design))
            Run_Linkage_Screens(this);
        break;
    default:
        Show_Message(
            "This screen comes with a later release.\n"
            "lobemax-cli prints tables of every calculated variable, and File / Export writes them.",
            Buttons::OK, Symbol::information);
        break;
    }
    Keep_Recovery();
    Refresh();
    Go_to_Chosen();
}

void frm_HomeScreen::Open_Findings()
{
    screens::Open_Findings(*this, std::nullopt);
    Refresh();
    Go_to_Chosen();
}

void frm_HomeScreen::Go_to_Chosen()
{
    if (const auto place = std::exchange(Chosen_Place(), std::nullopt); place && May_Go(design, *place))
        Press(Button_of(*place));
}

void frm_HomeScreen::Open_Path(const QString& path)
{
    if (Open_Model(design, From_Qt(path)))
        Remember(From_Qt(path));
    Desk_History().Start_Anew();
    Refresh();
}

void frm_HomeScreen::Keep_Recovery()
{
    if (folder_.empty())
        return;
    Write_Recovery(design, folder_);
    kept_.start();
}

void frm_HomeScreen::Show_Recent()
{
    recent_->clear();
    const QStringList paths = QSettings().value(QStringLiteral("recent")).toStringList();
    for (const QString& path : paths) {
        QAction* const action = recent_->addAction(QFileInfo(path).fileName());
        action->setToolTip(path);
        On_Pick(action, this, [this, path] { Open_Path(path); });
    }
    if (paths.isEmpty())
        recent_->addAction(QStringLiteral("No files yet"))->setEnabled(false);
}

std::vector<std::string> Recent_Folders()
{
    std::vector<std::string> folders;
    for (const QString& path : QSettings().value(QStringLiteral("recent")).toStringList())
        folders.push_back(From_Qt(QFileInfo(path).absolutePath()));
    return folders;
}

void frm_HomeScreen::Remember(const std::string& path)
{
    if (path.empty())
        return;
    QSettings settings;
    QStringList paths = settings.value(QStringLiteral("recent")).toStringList();
    const QString whole = QFileInfo(To_Qt(path)).absoluteFilePath();
    paths.removeAll(whole);
    paths.prepend(whole);
    settings.setValue(QStringLiteral("recent"), paths.mid(0, most_recent));
}

bool frm_HomeScreen::May_Quit()
{
    const bool yes = Quit_Requested(design, [this] {
        frm_Quit question(this);
        return Run_Modal(question) == QDialog::Accepted;
    });
    if (!yes)
        return false;
    quitting_ = true;
    if (!folder_.empty())
        Drop_Recovery(folder_);
    Terminate(folder_);
    return true;
}

void frm_HomeScreen::End_by_System()
{
    Keep_Recovery();
    Terminate(folder_);
    quitting_ = true;
}

void frm_HomeScreen::Quit()
{
    if (May_Quit())
        close();
}

void frm_HomeScreen::Fourier()
{
    frm_FFT screen(this);
    Run_Modal(screen);
}

void frm_HomeScreen::Preferences()
{
    Preference_Services services;
    services.save = [this] {
        if (!folder_.empty())
            Write_Preferences(design, folder_);
    };
    services.set_format = [](const std::string& format) { return Change_Number_Format(design, format); };
    frm_Preferences screen(std::move(services), this);
    if (Run_Modal(screen) == QDialog::Accepted)
        Set_Full_Screen(design.run.Full_Screen);
}

void frm_HomeScreen::Set_Full_Screen(bool full)
{
    design.run.Full_Screen = full;
    const QRect normal = normalGeometry();
    const bool was_full = isMaximized();
    setWindowState(full ? Qt::WindowMaximized : Qt::WindowNoState);
    if (full)
        return;
    if (was_full && normal.isValid())
        setGeometry(
            normal);  // a window manager gives the size back later, and only where nothing was asked of it since
    Fit_to_Desktop(*this);
}

void frm_HomeScreen::closeEvent(QCloseEvent* event)
{
    event->setAccepted(quitting_ || May_Quit());
}

void frm_HomeScreen::dragEnterEvent(QDragEnterEvent* event)
{
    const QList<QUrl> urls = event->mimeData()->urls();
    if (urls.size() == 1 && urls.front().isLocalFile())
        event->acceptProposedAction();
}

void frm_HomeScreen::dropEvent(QDropEvent* event)
{
    event->acceptProposedAction();
    Open_Path(event->mimeData()->urls().front().toLocalFile());
}

}  // namespace lobemax::screens
