// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/screens/every_screen.h"

#include <QAction>
#include <QGroupBox>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSlider>
#include <QTableWidget>
#include <map>

#include "screens/help_viewer.h"
#include "screens/resources.h"

namespace lobemax {
namespace {

using namespace screens;
using testing::A_Screen;
using testing::Driver;
using testing::Every_Screen;

/// A desktop of a size of its own.
class Desktop_of {
public:
    explicit Desktop_of(const QSize& size)
        : before_(Use_Available_Geometry([size](const QWidget&) { return QRect(QPoint(), size); }))
    {
    }
    ~Desktop_of() { Use_Available_Geometry(std::move(before_)); }
    Desktop_of(const Desktop_of&) = delete;
    Desktop_of& operator=(const Desktop_of&) = delete;

private:
    Available_Geometry before_;
};

class Screens_at_Large : public testing::Desktop_Test {
protected:
    void SetUp() override
    {
        Desktop_Test::SetUp();
        Load_Resources();
    }
    void TearDown() override
    {
        for (QWidget* const window : QApplication::topLevelWidgets())
            if (dynamic_cast<Help_Viewer*>(window) != nullptr)
                window->close();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        Desktop_Test::TearDown();
    }
    static Help_Viewer* Help()
    {
        for (QWidget* const window : QApplication::topLevelWidgets())
            if (auto* const viewer = dynamic_cast<Help_Viewer*>(window); viewer != nullptr && viewer->isVisible())
                return viewer;
        return nullptr;
    }
    /// Where a widget stands in its window.
    static QRect Place(const QWidget& widget) { return {widget.mapTo(widget.window(), QPoint()), widget.size()}; }
    /// The controls that the Tab key reaches, in its order, from the first of the window on.
    static QList<QWidget*> Stops(QWidget& window)
    {
        QList<QWidget*> stops;
        for (QWidget* w = window.nextInFocusChain(); w != &window; w = w->nextInFocusChain())
            if ((w->focusPolicy() & Qt::TabFocus) != 0 && w->isVisibleTo(&window) && w->isEnabled() &&
                w->window() == &window && w->focusProxy() == nullptr)
                stops.append(w);
        return stops;
    }
    static std::string Told(const QWidget& widget)
    {
        return (widget.objectName().isEmpty() ? QString::fromUtf8(widget.metaObject()->className())
                                              : widget.objectName())
            .toStdString();
    }
};

/// Desktops that are in use: an old small one, and a notebook's at one and a half the size of its letters.
const std::array small_desktops{QSize(1024, 768), QSize(911, 512)};

TEST_F(Screens_at_Large, every_screen_fits_a_small_desktop_with_its_buttons_in_reach)
{
    for (const QSize& desktop : small_desktops) {
        const Desktop_of here(desktop);
        for (const A_Screen& entry : Every_Screen()) {
            QSettings().clear();
            const auto screen = entry.make();
            const Driver user(*screen);
            EXPECT_LE(screen->width(), desktop.width()) << entry.name;
            EXPECT_LE(screen->height(), desktop.height()) << entry.name;
            for (QPushButton* const button : screen->findChildren<QPushButton*>()) {
                if (!button->isVisible())
                    continue;
                bool scrolled = false;
                for (const QWidget* w = button; w != nullptr; w = w->parentWidget())
                    scrolled = scrolled || qobject_cast<const QScrollArea*>(w) != nullptr;
                if (!scrolled) {
                    EXPECT_TRUE(screen->rect().contains(Place(*button)))
                        << entry.name << "." << Told(*button) << " at " << desktop.width();
                }
            }
        }
    }
}

TEST_F(Screens_at_Large, what_moves_on_and_back_stands_outside_of_what_scrolls)
{
    const Desktop_of here(QSize(911, 512));
    for (const A_Screen& entry : Every_Screen()) {
        if (entry.name == "frm_HomeScreen")
            continue;
        const auto screen = entry.make();
        const Driver user(*screen);
        for (const char* const name :
             {"cmd_Done", "cmd_Cancel", "cmd_Back", "cmd_Calc", "cmd_CalcAll", "cmd_PlotDone", "cmd_PickPlotDone",
              "cmd_Save", "cmd_Exit", "cmd_Start", "cmd_YesQuit", "cmd_OK", "cmd_Close", "cmd_Go"})
            if (const auto* const button = screen->findChild<QPushButton*>(name)) {
                for (const QWidget* w = button; w != nullptr; w = w->parentWidget())
                    EXPECT_EQ(qobject_cast<const QScrollArea*>(w), nullptr) << entry.name << "." << name;
            }
    }
}

TEST_F(Screens_at_Large, nothing_scrolls_where_the_desktop_has_room)
{
    const Desktop_of here(QSize(1920, 1200));
    for (const A_Screen& entry : Every_Screen()) {
        QSettings().clear();
        const auto screen = entry.make();
        const Driver user(*screen);
        for (const QScrollArea* const area : screen->findChildren<QScrollArea*>())
            EXPECT_FALSE(area->verticalScrollBar()->isVisible() || area->horizontalScrollBar()->isVisible())
                << entry.name;
    }
}

TEST_F(Screens_at_Large, a_place_remembered_on_a_larger_desktop_is_brought_back)
{
    {
        frm_FFT screen;
        screen.show();
        screen.setGeometry(700, 600, 780, 700);
    }
    const Desktop_of here(QSize(911, 512));
    frm_FFT screen;
    const Driver user(screen);
    EXPECT_TRUE(QRect(0, 0, 911, 512).contains(screen.geometry()))
        << screen.x() << " " << screen.y() << " " << screen.width() << " " << screen.height();
}

TEST_F(Screens_at_Large, a_control_that_takes_the_focus_is_scrolled_into_view)
{
    const Desktop_of here(QSize(911, 300));
    Build("Double Dwell");
    frm_SizeCam screen;
    const Driver user(screen);
    auto& entry = user.Find<Entry>("txt_ShiftAng");
    EXPECT_FALSE(entry.visibleRegion().boundingRect() == entry.rect());
    entry.setFocus();
    EXPECT_EQ(entry.visibleRegion().boundingRect(), entry.rect());
}

TEST_F(Screens_at_Large, full_screen_is_for_all_but_questions_and_short_choices)
{
    for (const bool full : {true, false}) {
        design.run.Full_Screen = full;
        for (const A_Screen& entry : Every_Screen()) {
            const auto screen = entry.make();
            const Driver user(*screen);
            const bool small = entry.name == "frm_Title" || entry.name == "frm_Quit" ||
                               entry.name == "frm_Preferences" || entry.name == "frm_PlotType" ||
                               entry.name == "frm_Arcs" || entry.name == "frm_Lobe" || entry.name == "frm_Limits" ||
                               entry.name == "frm_Export_Question";
            EXPECT_EQ(screen->isMaximized(), full && !small) << entry.name;
        }
    }
}

TEST_F(Screens_at_Large, a_number_cut_short_is_shown_as_it_was_read_and_marked)
{
    struct Case {
        std::string screen;
        QString field;
        const char* typed;
        const char* read;
    };
    const std::vector<Case> cases{
        {"frm_InputData", "txt_Segmts", "3,7", "3"},
        {"frm_InputData", "txt_Omega", "25,7", "25"},
        {"frm_InputData", "txt_ShiftAng", "25,7", "25"},
        {"frm_InputData", Element("txt_Beta", 0), "60,5", "60"},
        {"frm_InputData", Element("txt_Low", 0), "0,5", "0"},
        {"frm_InputData", Element("txt_High", 0), "25,7", "25"},
        {"frm_SizeCam", "txt_Prime", "120,7", "120"},
        {"frm_SizeCam", "txt_follower", "25,7", "25"},
        {"frm_SizeCam", "txt_Cutter", "25,7", "25"},
        {"frm_SizeCam", "txt_Offset", "5,7", "5"},
        {"frm_SizeCam", "txt_folwrangle", "25,7", "25"},
        {"frm_SizeCam", "txt_ShiftAng", "25,7", "25"},
        {"frm_Animate", "txt_Prime", "120,7", "120"},
        {"frm_Animate", "txt_Follower", "25,7", "25"},
        {"frm_Animate", "txt_Offset", "5,7", "5"},
        {"frm_Dynamics", "txt_Mass", "3,7", "3"},
        {"frm_Dynamics", "txt_Spring", "9000,7", "9000"},
        {"frm_Dynamics", "txt_Journal", "25,7", "25"},
        {"frm_Model", Element("txt_Mass", 1), "2,7", "2"},
        {"frm_Model", Element("txt_Zeta", 0), "0,7", "0"},
        {"frm_Model", "txt_max_steps", "2500,7", "2500"},
        {"frm_CompCam", "txt_Mass", "2,7", "2"},
        {"frm_CompCam", "txt_max_steps", "900,7", "900"},
        {"frm_Stress", "txt_Length", "25,7", "25"},
        {"frm_Stress", "txt_Weight", "25,7", "25"},
        {"frm_Linkage", Element("txt_Linkout", 2), "101,7", "101"},
        {"frm_Linkage", "txt_Cycles", "2,7", "2"},
        {"frm_CamSlider4", Element("txt_Linkout", 14), "355,7", "355"},
        {"frm_CamSlider6", Element("txt_Linkout", 16), "179,7", "179"},
        {"frm_MassProp4", Element("txt_Mass", 2), "2,7", "2"},
        {"frm_MassProp6", Element("txt_Spring", 6), "25,7", "25"},
        {"frm_Import_data", "txt_Base", "25,7", "25"},
        {"frm_Arcs", "txt_Flank", "60,7", "60"},
        {"frm_Lobe", "txt_Lift", "5,7", "5"},
        {"frm_Limits", "txt_Phi", "28,5", "28"},
        {"frm_Cad", "txt_dxf_cutter", "25,7", "25"},
        {"frm_Import_data", "txt_Omega", "120,7", "120"},
        {"frm_FFT", "txt_Harmonics", "25,7", "25"},
        {"frm_Bounds", "txt_NoConds", "6,7", "6"},
        {"frm_Bounds", Element("txt_Vbound", 0), "0,7", "0"},
        {"frm_Bounds", Element("txt_Theta", 4), "25,7", "25"},
        {"frm_Knots", "txt_Order", "5,7", "5"},
        {"frm_Knots", Element("txt_Knot", 1), "25,7", "25"},
    };
    for (const A_Screen& entry : Every_Screen()) {
        if (entry.name == "frm_Poly")
            continue;  // its one entry is the title of a print: words
        const bool listed = std::ranges::find(cases, entry.name, &Case::screen) != cases.end();
        for (const Case& c : cases) {
            if (c.screen != entry.name)
                continue;
            const auto screen = entry.make();
            const Driver user(*screen);
            if (entry.name == "frm_FFT")
                user.Pick("cmb_Var1", "Velocity");
            user.Fill(c.field, c.typed);
            const auto& field = user.Find<Entry>(c.field);
            EXPECT_EQ(field.Text(), c.read) << entry.name << "." << c.field.toStdString();
            EXPECT_EQ(field.Cut(), std::string("'") + c.typed + "' was read as " + c.read)
                << entry.name << "." << c.field.toStdString();
            const auto* const mark = field.findChild<QAction*>(c.field + "_cut");
            ASSERT_NE(mark, nullptr) << entry.name << "." << c.field.toStdString();
            EXPECT_TRUE(mark->isVisible());
        }
        if (!listed) {
            const auto screen = entry.make();
            for (QLineEdit* const field : screen->findChildren<QLineEdit*>())
                EXPECT_EQ(dynamic_cast<Entry*>(field), nullptr) << entry.name << "." << Told(*field);
        }
    }
}

/// The access keys of texts, told by where they stand; "&&" is no key.
void Collect_Key(const QString& text, const std::string& place, std::map<QChar, std::vector<std::string>>& keys)
{
    for (qsizetype at = text.indexOf('&'); at >= 0 && at + 1 < text.size(); at = text.indexOf('&', at + 2))
        if (text[at + 1] != '&')
            keys[text[at + 1].toUpper()].push_back(place);
}

void Expect_Single(const std::map<QChar, std::vector<std::string>>& keys, const std::string& screen)
{
    for (const auto& [key, places] : keys) {
        std::string all;
        for (const std::string& place : places)
            all += " " + place;
        EXPECT_EQ(places.size(), 1U) << screen << " Alt+" << QString(key).toStdString() << ":" << all;
    }
}

void Expect_Single_in_Menu(const QMenu& menu, const std::string& screen)
{
    std::map<QChar, std::vector<std::string>> keys;
    for (const QAction* const action : menu.actions()) {
        Collect_Key(action->text(), action->text().toStdString(), keys);
        if (action->menu() != nullptr)
            Expect_Single_in_Menu(*action->menu(), screen);
    }
    Expect_Single(keys, screen + " menu " + menu.title().toStdString());
}

TEST_F(Screens_at_Large, no_access_key_is_given_twice)
{
    for (const A_Screen& entry : Every_Screen()) {
        const auto screen = entry.make();
        const Driver user(*screen);
        std::map<QChar, std::vector<std::string>> keys;
        for (const QWidget* const widget : screen->findChildren<QWidget*>()) {
            if (!widget->isVisible())
                continue;
            if (const auto* const button = qobject_cast<const QAbstractButton*>(widget))
                Collect_Key(button->text(), Told(*button), keys);
            else if (const auto* const label = qobject_cast<const QLabel*>(widget); label && label->buddy())
                Collect_Key(label->text(), Told(*label->buddy()), keys);
            else if (const auto* const frame = qobject_cast<const QGroupBox*>(widget))
                Collect_Key(frame->title(), Told(*frame), keys);
            else if (const auto* const bar = qobject_cast<const QMenuBar*>(widget))
                for (const QAction* const action : bar->actions()) {
                    Collect_Key(action->text(), "menu " + action->text().toStdString(), keys);
                    Expect_Single_in_Menu(*action->menu(), entry.name);
                }
        }
        Expect_Single(keys, entry.name);
    }
}

/// An option takes the mark from all options below its parent, deep ones too: a question's options need a parent
/// without those of another.
TEST_F(Screens_at_Large, an_option_excludes_those_of_its_own_question_alone)
{
    const auto question = [](const QWidget& option) { return option.objectName().section('(', 0, 0); };
    for (const A_Screen& entry : Every_Screen()) {
        const auto window = entry.make();
        for (const QRadioButton* const option : window->findChildren<QRadioButton*>()) {
            if (!option->autoExclusive() || option->group() != nullptr)
                continue;
            for (const QRadioButton* const other : option->parentWidget()->findChildren<QRadioButton*>())
                EXPECT_TRUE(!other->autoExclusive() || other->group() != nullptr ||
                            question(*other) == question(*option))
                    << entry.name << ": " << option->objectName().toStdString() << " and "
                    << other->objectName().toStdString();
        }
    }
}

TEST_F(Screens_at_Large, the_tabulator_goes_through_the_controls_as_they_stand)
{
    const Desktop_of here(QSize(1920, 1200));
    for (const A_Screen& entry : Every_Screen()) {
        const auto screen = entry.make();
        screen->resize(1400, 1000);
        const Driver user(*screen);
        const QList<QWidget*> stops = Stops(*screen);
        EXPECT_GE(stops.size(), 2) << entry.name;
        for (int k = 1; k < stops.size(); ++k) {
            const QRect from = Place(*stops[k - 1]);
            const QRect to = Place(*stops[k]);
            const bool above = to.bottom() < from.top();
            const bool right = to.left() > from.right();
            const bool beside = !above && to.top() <= from.bottom();
            // Down or along the line; up only into a column further right.
            EXPECT_TRUE((!above || right) && (!beside || to.right() > from.left()))
                << entry.name << ": " << Told(*stops[k - 1]) << " -> " << Told(*stops[k]);
        }
    }
}

TEST_F(Screens_at_Large, every_tab_stop_is_a_control_that_shows_its_focus)
{
    const Desktop_of here(QSize(1920, 1200));
    for (const A_Screen& entry : Every_Screen()) {
        const auto screen = entry.make();
        screen->resize(1400, 1000);
        const Driver user(*screen);
        for (QWidget* const stop : Stops(*screen)) {
            const bool control = qobject_cast<QAbstractButton*>(stop) || qobject_cast<QLineEdit*>(stop) ||
                                 qobject_cast<QComboBox*>(stop) || qobject_cast<QTableWidget*>(stop) ||
                                 qobject_cast<QSlider*>(stop) || qobject_cast<QPlainTextEdit*>(stop);
            EXPECT_TRUE(control) << entry.name << ": " << Told(*stop);
            EXPECT_FALSE(stop->visibleRegion().isEmpty()) << entry.name << ": " << Told(*stop);
        }
    }
}

TEST_F(Screens_at_Large, a_screen_opens_with_the_focus_in_one_of_its_controls)
{
    for (const A_Screen& entry : Every_Screen()) {
        const auto screen = entry.make();
        const Driver user(*screen);
        const QWidget* const focus = screen->focusWidget();
        ASSERT_NE(focus, nullptr) << entry.name;
        EXPECT_NE(focus->focusPolicy() & Qt::TabFocus, 0) << entry.name << ": " << Told(*focus);
        EXPECT_TRUE(focus->isVisible()) << entry.name;
    }
}

TEST_F(Screens_at_Large, every_entry_that_takes_the_focus_by_tab_is_selected_whole)
{
    for (const A_Screen& entry : Every_Screen()) {
        const auto screen = entry.make();
        const Driver user(*screen);
        for (QWidget* const stop : Stops(*screen))
            if (auto* const field = dynamic_cast<Entry*>(stop)) {
                for (const Qt::FocusReason reason :
                     {Qt::TabFocusReason, Qt::BacktabFocusReason, Qt::ShortcutFocusReason, Qt::OtherFocusReason}) {
                    field->setFocus(reason);
                    EXPECT_EQ(field->selectedText(), field->text()) << entry.name << "." << Told(*field);
                    field->deselect();
                    field->clearFocus();
                }
            }
    }
}

TEST_F(Screens_at_Large, f1_opens_the_page_of_the_screen)
{
    const std::map<std::string, std::string> pages{
        {"frm_HomeScreen", "home"},
        {"frm_Title", "start"},
        {"frm_Quit", "home"},
        {"frm_Preferences", "preferences"},
        {"frm_InputData", "input"},
        {"frm_Continuity", "continuity"},
        {"frm_Bounds", "conditions"},
        {"frm_Poly", "conditions"},
        {"frm_Knots", "splines"},
        {"frm_Arcs", "import"},
        {"frm_Lobe", "plots"},
        {"frm_FFT", "fourier"},
        {"frm_SizeCam", "sizing"},
        {"frm_Animate", "animation"},
        {"frm_Dynamics", "dynamics"},
        {"frm_CompCam", "compensation"},
        {"frm_ModelType", "vibration"},
        {"frm_Model", "vibration"},
        {"frm_Stress", "stress"},
        {"frm_LinkageType", "linkage"},
        {"frm_Linkage", "linkage"},
        {"frm_CamSlider4", "linkage"},
        {"frm_CamSlider6", "linkage"},
        {"frm_MassProp4", "linkage"},
        {"frm_MassProp6", "linkage"},
        {"frm_Linkplots", "linkage"},
        {"frm_PrintSelect", "printing"},
        {"frm_PrintData", "printing"},
        {"frm_Report", "printing"},
        {"frm_Cad", "cad"},
        {"frm_Findings", "findings"},
        {"frm_Limits", "findings"},
        {"frm_Export_Question", "findings"},
        {"frm_Import_data", "import"},
    };
    for (const A_Screen& entry : Every_Screen()) {
        const auto screen = entry.make();
        const Driver user(*screen);
        QTest::keyClick(screen->focusWidget(), Qt::Key_F1);
        QApplication::processEvents();
        const auto found = pages.find(entry.name);
        ASSERT_NE(Help(), nullptr) << entry.name;
        EXPECT_EQ(Help()->Page().toStdString(), found == pages.end() ? "plots" : found->second) << entry.name;
        Help()->close();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

TEST_F(Screens_at_Large, the_circles_are_a_screen_as_others_are)
{
    design.run.Full_Screen = true;
    frm_HomeScreen home("");
    const Driver user(home);
    bool played = false;
    const testing::Modals modals([&](QDialog& open) {
        played = true;
        EXPECT_EQ(open.objectName(), "frm_Circles");
        EXPECT_TRUE(open.isMaximized());
        QTest::keyClick(&open, Qt::Key_F1);
        ASSERT_NE(Help(), nullptr);
        EXPECT_EQ(Help()->Page(), "preferences");
        QTest::keyClick(&open, Qt::Key_Escape);
        EXPECT_FALSE(open.isVisible());
    });
    home.findChild<QAction*>("mnu_Circles")->trigger();
    EXPECT_TRUE(played);
}

TEST_F(Screens_at_Large, the_help_stays_usable_over_a_modal_screen)
{
    Build("Double Dwell");
    frm_HomeScreen home("");
    const Driver user(home);
    bool played = false;
    const testing::Modals modals([&](QDialog& open) {
        played = true;
        QTest::keyClick(&open, Qt::Key_F1);
        Help_Viewer* const help = Help();
        ASSERT_NE(help, nullptr);
        EXPECT_EQ(help->Page(), "sizing");
        EXPECT_FALSE(help->isModal());
        EXPECT_FALSE(help->testAttribute(Qt::WA_QuitOnClose));
        QTest::qWait(20);
        auto& list = *help->findChild<QListWidget*>("lst_Pages");
        const auto click = [](QWidget& in, const QPoint& at) {  // through the window, where a modal screen blocks
            QTest::mouseClick(in.window()->windowHandle(), Qt::LeftButton, {}, in.mapTo(in.window(), at));
            QApplication::processEvents();
        };
        click(*list.viewport(), list.visualItemRect(list.item(3)).center());
        EXPECT_EQ(help->Page(), "laws");
        // Home, which the screen stands over, waits.
        click(user.Find<QPushButton>("cmd_Quit"), QPoint(5, 5));
        open.reject();
    });
    user.Press("cmd_Size");
    EXPECT_TRUE(played);
    ASSERT_NE(Help(), nullptr);  // and stays when the screen has gone
    EXPECT_EQ(Help()->Page(), "laws");
}

}  // namespace
}  // namespace lobemax
