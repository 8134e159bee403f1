// SPDX-License-Identifier: GPL-3.0-or-later
// A long session: every screen is opened and closed again and again, from the Home screen as a user does and on its
// own. Nothing stays behind: neither windows nor memory. Under the address sanitizer, which looks for leaks at the end,
// 1000 openings; LOBEMAX_OPENINGS is another number.
#include <malloc.h>

#include <QAbstractButton>
#include <QAction>
#include <QPixmap>
#include <QPixmapCache>
#include <cstdlib>
#include <iostream>

#include "edit/rungs.h"
#include "screens/resources.h"
#include "tests/screens/every_screen.h"
#include "tests/support/watched_boxes.h"

#ifdef LOBEMAX_ADDRESS_SANITIZER
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();  // its header comes with another compiler
#endif

namespace lobemax {
namespace {

using screens::frm_HomeScreen;
using testing::Driver;

#ifdef LOBEMAX_ADDRESS_SANITIZER
constexpr int openings = 1000;
std::size_t Bytes_in_Use()
{
    return __sanitizer_get_current_allocated_bytes();
}
#else
constexpr int openings = 200;
std::size_t Bytes_in_Use()
{
    return mallinfo2().uordblks;
}
#endif

/// What a loop of events does between two inputs of the user.
void Idle()
{
    QApplication::processEvents();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

class Many_Openings : public testing::Desktop_Test {
protected:
    void SetUp() override
    {
        Desktop_Test::SetUp();
        screens::Load_Resources();
        screens_ = testing::Every_Screen();
        Build_Sized();
        home_ = std::make_unique<frm_HomeScreen>("");
        user_ = std::make_unique<Driver>(*home_);
    }
    void TearDown() override
    {
        user_.reset();
        home_.reset();
        Idle();
        Desktop_Test::TearDown();
    }

    /// The screens that a button or an entry of the Home screen opens, looked at and left by Escape.
    void Open_from_Home(const QString& name)
    {
        const int before = opened_;
        if (auto* const button = home_->findChild<QAbstractButton*>(name))
            button->click();
        else if (auto* const action = home_->findChild<QAction*>(name))
            action->trigger();
        Idle();
        EXPECT_GT(opened_, before) << name.toStdString() << " opened nothing";
    }

    void Open_alone(const testing::A_Screen& entry)
    {
        const auto screen = entry.make();
        const Driver user(*screen);
        EXPECT_FALSE(screen->grab().isNull());
        screen->close();
        ++opened_;
        Idle();
    }

    /// A design on which every rung that a screen has may be opened.
    static void Build_Sized()
    {
        Build("Double Dwell");
        EXPECT_TRUE(Run_Size(design) && Run_Forces(design));
    }

    /// Each screen once, both ways.
    void Round()
    {
        // The input last: accepted again, its motion takes the rungs above away.
        for (const char* const name : {"cmd_Size", "cmd_Draw", "cmd_Force", "cmd_Model", "cmd_Stress", "cmd_Plot",
                                       "mnu_CalcFFT", "mnu_Lobe", "mnu_Circles", "mnu_Preferences", "cmd_Input"})
            Open_from_Home(name);
        for (const testing::A_Screen& entry : screens_)
            Open_alone(entry);
        Build_Sized();
        screens::Desk_History().Start_Anew();
        boxes_.texts.clear();
        QPixmapCache::clear();  // has a limit of its own
        Refresh_Screens();
    }

    int opened_ = 0;

private:
    std::vector<testing::A_Screen> screens_;
    std::unique_ptr<frm_HomeScreen> home_;
    std::unique_ptr<Driver> user_;
    testing::Watched_Boxes boxes_{Answer::OK};
    const testing::Modals modals_{[this](QDialog& open) {
        QApplication::processEvents();
        EXPECT_FALSE(open.grab().isNull());
        ++opened_;
        QTest::keyClick(&open, Qt::Key_Escape);
        if (open.isVisible())
            open.reject();
    }};
};

TEST_F(Many_Openings, leave_no_window_and_no_memory_behind)
{
    const char* const asked = std::getenv("LOBEMAX_OPENINGS");
    const int wanted = asked != nullptr ? std::atoi(asked) : openings;
    Round();  // what is made once: fonts, pictures, tables
    Round();
    const auto windows = QApplication::topLevelWidgets().size();
    const std::size_t before = Bytes_in_Use();
    const int first = opened_;
    while (opened_ - first < wanted)
        Round();
    const double grown = (static_cast<double>(Bytes_in_Use()) - static_cast<double>(before)) / (opened_ - first);
    std::cout << opened_ - first << " openings, " << grown << " bytes more an opening\n";
    EXPECT_EQ(QApplication::topLevelWidgets().size(), windows);
    EXPECT_LT(grown, 200.0) << "a screen that stayed would be thousands";
}

}  // namespace
}  // namespace lobemax
