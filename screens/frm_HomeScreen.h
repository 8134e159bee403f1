// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QElapsedTimer>
#include <QMainWindow>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "core/design_state.h"
#include "core/messages.h"
#include "forms/workflow.h"
#include "screens/desk.h"
#include "screens/screen.h"

class QAction;
class QLabel;
class QMenu;
class QPushButton;
class QTimer;

namespace lobemax::paint {
class Chart;
}

namespace lobemax::screens {

class Check_Mark;
class Status_Panel;

/// The folders of the files that were opened or saved last.
std::vector<std::string> Recent_Folders();

/// The hub: buttons that open with the ladder, menus, lamps, the design at a glance.
class frm_HomeScreen : public QMainWindow {
public:
    /// @param folder  of the program in the documents, ending with its separator; empty: nothing is kept there
    explicit frm_HomeScreen(std::string folder);
    ~frm_HomeScreen() override;

    /// Follows the state: buttons, menus, lamps, marks, panel, title.
    void Refresh();
    /// Opens a model file the way File/Open does, from its question on.
    void Open_Path(const QString& path);
    /// Keeps unsaved work beside the run record; called by a timer and after each screen.
    void Keep_Recovery();
    /// The system ends the program: unsaved work is kept for the next start, and the run counts as ended properly.
    void End_by_System();

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void Make_Menus();
    QWidget* Make_Center();
    QAction* Add_Action(QMenu& menu, const QString& name, const QString& caption, std::function<void()> work);
    void Run_Action(const std::string& name);
    void Press(Home_Button button);
    void Open_Findings();
    /// Opens the screen that was chosen among the findings, if one was.
    void Go_to_Chosen();
    template <class Form>
    void Open_Screen()
    {
        // Leaving by Back gives back what was before: fields, results, marks.
        History::Transaction work(Desk_History());
        Form screen(this);
        if (Run_Modal(screen) == QDialog::Accepted)
            work.Commit(From_Qt(screen.windowTitle()));
    }
    void Build_Example(const std::string& caption);
    void Show_Recent();
    void Remember(const std::string& path);
    bool May_Quit();
    void Quit();
    void Show_Design();
    void Fourier();
    void Preferences();
    void Set_Full_Screen(bool full);

    std::string folder_;
    bool quitting_ = false;
    Host before_;
    std::map<std::string, QAction*> actions_;
    QList<QPushButton*> buttons_;
    QMenu* recent_ = nullptr;
    QLabel* compcam_ = nullptr;
    QLabel* design_ = nullptr;
    paint::Chart* preview_ = nullptr;
    Status_Panel* status_ = nullptr;
    Check_Mark* mark_ = nullptr;
    QTimer* autosave_ = nullptr;
    QTimer* soon_ = nullptr;  // a recovery that waits for its time
    QElapsedTimer kept_;      // since the last one
};

}  // namespace lobemax::screens
