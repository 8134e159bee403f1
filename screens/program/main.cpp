// SPDX-License-Identifier: GPL-3.0-or-later
/// lobemax: the desktop program.

#include <unistd.h>

#include <CLI/CLI.hpp>
#include <QApplication>
#include <QFileInfo>
#include <QScreen>
#include <QSocketNotifier>
#include <QStandardPaths>
#include <QStyleFactory>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <optional>
#include <thread>

#include "core/startup.h"
#include "core/traps.h"
#include "edit/unsaved.h"
#include "files/limits_file.h"
#include "files/model_file.h"
#include "files/preferences.h"
#include "files/recovery.h"
#include "files/run_record.h"
#include "files/standard_files.h"
#include "files/whole_file.h"
#include "forms/preference_choice.h"
#include "screens/dark_palette.h"
#include "screens/desk.h"
#include "screens/desktop_host.h"
#include "screens/frm_HomeScreen.h"
#include "screens/frm_Quit.h"
#include "screens/frm_Title.h"
#include "screens/resources.h"
#include "screens/screen.h"

namespace {

using namespace lobemax;
using namespace lobemax::screens;

/// The last net under every event: what no trap of a routine has caught is told, and the program goes on.
class Desktop : public QApplication {
public:
    using QApplication::QApplication;
    bool notify(QObject* receiver, QEvent* event) override
    {
        try {
            return QApplication::notify(receiver, event);
        } catch (const Fault& fault) {
            Error_Report(fault.Number(), "lobemax");
        } catch (const std::bad_alloc&) {
            Error_Report(out_of_memory, "lobemax");
        } catch (const std::exception&) {
            Error_Report(internal_error, "lobemax");
        }
        return false;
    }
};

struct Options {
    std::string file;
    std::string theme = "system";
    bool no_title = false;
};

/// Who opens a double-clicked model file: the user's list of default applications.
void Register(const std::string& application)
{
    Write_Default_Application(application,
                              From_Qt(QStandardPaths::writableLocation(QStandardPaths::ConfigLocation)) + "/");
}

std::string Documents()
{
    return From_Qt(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
}

/// Calls back, in the event loop, when the process is asked to end.
class Termination {
public:
    explicit Termination(std::function<void()> asked)
    {
        if (::pipe(ends) != 0)
            return;
        auto* const notifier = new QSocketNotifier(ends[0], QSocketNotifier::Read, qApp);
        QObject::connect(notifier, &QSocketNotifier::activated, notifier, [asked = std::move(asked)] { asked(); });
        for (const int signal : {SIGTERM, SIGINT, SIGHUP})
            std::signal(signal, [](int) {
                const char byte = 0;
                static_cast<void>(!::write(ends[1], &byte, 1));  // all that a handler of signals may do
            });
    }

private:
    static inline int ends[2]{-1, -1};
};

/// While this stands, what Qt cannot go on without ends the program with a sentence and a status: no display, mostly.
class Display_Needed {
public:
    Display_Needed() { before = qInstallMessageHandler(Tell); }
    ~Display_Needed() { qInstallMessageHandler(before); }
    Display_Needed(const Display_Needed&) = delete;
    Display_Needed& operator=(const Display_Needed&) = delete;

private:
    static void Tell(QtMsgType type, const QMessageLogContext& context, const QString& text)
    {
        if (type == QtFatalMsg) {
            std::fputs("lobemax: no display can be opened; lobemax-cli works without one\n", stderr);
            std::_Exit(1);
        }
        if (before != nullptr)
            before(type, context, text);
    }
    static inline QtMessageHandler before = nullptr;
};

int Run(const Options& options)
{
    Install_Host(Desktop_Host());
    design = Design_State{};
    const std::string folder = Program_Folder(design, Documents());
    std::function<void()> asked_to_end =
        [&folder] {  // the title is up, or a question of the start: nothing can be lost
            Terminate(folder);
            std::_Exit(0);
        };
    const Termination termination([&asked_to_end] { asked_to_end(); });
    const Run_Start start = Check_Run_Record(design, folder, options.file);
    if (start == Run_Start::end_at_once)
        return 0;
    bool started = true;
    Start_Services services;
    services.read_preferences = [&folder] {
        Read_Preferences(design, folder);
        Set_Desk_Limits(Read_Limits(design, folder));
        Keep_Limits([folder](const Limits& limits) { Write_Limits(design, folder, limits); });
    };
    services.register_cam_file = Register;
    services.open_model = [](const std::string& path) {
        Mark_Saved(design);  // nothing has been typed yet, so there is nothing to ask about
        Open_Model(design, From_Qt(QFileInfo(To_Qt(path)).absoluteFilePath()));
    };
    services.show_title = [&] {
        if (options.no_title)
            return;
        frm_Title title;
        while (Run_Modal(title) != QDialog::Accepted) {
            frm_Quit quit;
            if (Run_Modal(quit) == QDialog::Accepted) {
                started = false;
                return;
            }
        }
    };
    Trap("lobemax", [&] { Sub_Main(design, options.file, services); });
    if (design.identity.File_Name.empty())
        Mark_Saved(design);
    Desk_History().Start_Anew();
    const QScreen& screen = *QGuiApplication::primaryScreen();
    Set_Screen_Scale(design, screen.size().width(), screen.size().height(), screen.physicalDotsPerInchX(),
                     screen.physicalDotsPerInchY());
    if (!started) {
        Terminate(folder);
        return 0;
    }
    // What a run that was killed in the midst of a save left beside its model. A folder on a server that is away may
    // take its time: the start does not wait.
    std::thread([folders = Recent_Folders()] {
        for (const std::string& recent : folders)
            Remove_Leftovers(recent);
    }).detach();
    frm_HomeScreen home(folder);
    home.show();
    Trap("lobemax", [&] {
        if (Offer_Recovery(design, folder))
            Desk_History().Start_Anew();
    });
    home.Refresh();
    // The end of the session and SIGTERM are proper ends, whose unsaved work waits for the next start.
    QObject::connect(qApp, &QGuiApplication::commitDataRequest, &home, [&home] { home.End_by_System(); });
    asked_to_end = [&home] {
        home.End_by_System();
        QApplication::exit(0);
    };
    return QApplication::exec();
}

}  // namespace

int main(int argc, char** argv)
{
    Guard_Standard_Files();
    Options options;
    CLI::App app{"LOBEMAX: design and analysis of cam-follower mechanisms", "lobemax"};
    app.set_version_flag("--version", std::string("lobemax ") + LOBEMAX_VERSION);
    app.add_option("file", options.file, "model file to open")->type_name("FILE.cam");
    app.add_option("--theme", options.theme, "system, light or dark")
        ->check(CLI::IsMember({"system", "light", "dark"}))
        ->capture_default_str();
    app.add_flag("--no-title", options.no_title, "go straight to the Home screen");
    CLI11_PARSE(app, argc, argv);

    std::optional<Display_Needed> needed(std::in_place);
    const Desktop application(argc, argv);
    needed.reset();
    QApplication::setOrganizationName(QStringLiteral("Lobemax"));
    QApplication::setApplicationName(QStringLiteral("lobemax"));
    QApplication::setDesktopFileName(QStringLiteral("lobemax"));
    Load_Resources();
    if (options.theme != "system")
        QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    if (options.theme == "dark")
        Use_Dark_Palette();
    int status = 1;
    Trap("lobemax", [&] { status = Run(options); });
    return status;
}
