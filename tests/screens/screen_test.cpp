// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/screen.h"

#include <QCheckBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QVBoxLayout>

#include "core/text.h"
#include "screens/desktop_host.h"
#include "screens/frm_Quit.h"
#include "screens/frm_Title.h"
#include "screens/resources.h"
#include "tests/support/desktop_design.h"

namespace lobemax {
namespace {

using namespace screens;
using testing::Driver;

class Foundation : public testing::Desktop_Test {};

class Two_Fields : public Screen {
public:
    Two_Fields() : Screen("frm_Two", "Two", nullptr), first(new Entry("txt_First")), second(new Entry("txt_Second"))
    {
        auto* const column = new QVBoxLayout(this);
        column->addWidget(first);
        column->addWidget(second);
        first->accepted = [this](const std::string& text) { taken.push_back(text); };
    }
    Entry* first;
    Entry* second;
    std::vector<std::string> taken;
};

TEST_F(Foundation, an_entry_is_taken_on_leaving_or_enter_and_only_after_a_change)
{
    Two_Fields screen;
    const Driver user(screen);
    user.Fill("txt_First", "12");
    EXPECT_EQ(screen.taken, (std::vector<std::string>{"12"}));
    QTest::mouseClick(screen.first, Qt::LeftButton);
    user.Leave("txt_First");
    EXPECT_EQ(screen.taken.size(), 1U);
    user.Type("txt_First", "13");
    user.Enter("txt_First");
    user.Leave("txt_First");
    EXPECT_EQ(screen.taken, (std::vector<std::string>{"12", "13"}));
    screen.first->Show_Text("99");  // set by the program
    user.Leave("txt_First");
    EXPECT_EQ(screen.taken.size(), 2U);
}

TEST_F(Foundation, a_number_cut_short_is_shown_as_it_was_read_and_marked)
{
    Two_Fields screen;
    const Driver user(screen);
    user.Fill("txt_First", "25,7");
    EXPECT_EQ(screen.taken, (std::vector<std::string>{"25"}));
    EXPECT_EQ(screen.first->Text(), "25");
    EXPECT_EQ(screen.first->Cut(), "'25,7' was read as 25");
    EXPECT_EQ(screen.first->accessibleDescription(), "'25,7' was read as 25");
    user.Type("txt_First", "3");  // typing on takes the mark away
    EXPECT_EQ(screen.first->Cut(), "");
    EXPECT_EQ(screen.first->accessibleDescription(), "");
    user.Fill("txt_First", "abc");
    EXPECT_EQ(screen.taken.back(), "0");
    EXPECT_EQ(screen.first->Cut(), "'abc' was read as 0");
    user.Fill("txt_First", "26.5");
    EXPECT_EQ(screen.taken.back(), "26.5");
    EXPECT_EQ(screen.first->Cut(), "");
    user.Fill("txt_First", "90abc");
    screen.first->Show_Text("90");  // the same again
    EXPECT_EQ(screen.first->Cut(), "'90abc' was read as 90");
    screen.first->Show_Text("91");
    EXPECT_EQ(screen.first->Cut(), "");
    screen.first->Takes_Words();
    user.Fill("txt_First", "A title");
    EXPECT_EQ(screen.taken.back(), "A title");
}

TEST_F(Foundation, arrow_keys_step_a_number_where_the_screen_allows_it)
{
    Two_Fields screen;
    const Driver user(screen);
    screen.first->stepped = [](const std::string& text, int steps) { return std::to_string(std::stoi(text) + steps); };
    screen.first->Show_Text("10");
    screen.first->setFocus();
    QTest::keyClick(screen.first, Qt::Key_Up);
    QTest::keyClick(screen.first, Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(screen.taken, (std::vector<std::string>{"11", "1"}));
}

TEST_F(Foundation, a_fault_in_a_control_is_told_and_the_entry_shows_its_last_good_text)
{
    Two_Fields screen;
    const Driver user(screen);
    screen.first->Show_Text("7");
    screen.first->accepted = [](const std::string& text) { (void)Single(Val(design, text)); };
    user.Fill("txt_First", "8");
    script_.Expect(testing::Error_Box(6, "Overflow", "frm_Two.txt_First"));
    user.Fill("txt_First", "1e99");
    EXPECT_EQ(user.Text("txt_First"), "8");
    EXPECT_FALSE(screen.first->Dirty());
    QPushButton* const button = Button("cmd_Break", "Break", [] { (void)Single(1e99); });
    screen.layout()->addWidget(button);
    script_.Expect(testing::Error_Box(6, "Overflow", "frm_Two.cmd_Break"));
    button->click();
}

TEST_F(Foundation, a_button_leaves_the_field_before_it_acts)
{
    Two_Fields screen;
    QPushButton* button = nullptr;
    int pressed = 0;
    button = Button("cmd_Go", "&Go", [&] { pressed += static_cast<int>(screen.taken.size()); });
    screen.layout()->addWidget(button);
    const Driver user(screen);
    user.Type("txt_First", "5");
    button->click();  // as by its access key, which leaves the focus where it is
    EXPECT_EQ(pressed, 1);
    screen.first->accepted = [&](const std::string&) { button->setEnabled(false); };
    user.Type("txt_First", "6");
    button->click();
    EXPECT_EQ(pressed, 1);
}

TEST_F(Foundation, enter_presses_the_button_that_has_the_focus)
{
    Two_Fields screen;
    int pressed = 0;
    for (const char* const name : {"cmd_One", "cmd_Two"})
        screen.layout()->addWidget(Button(name, name, [&pressed, name] { pressed = name == std::string("cmd_Two"); }));
    QPushButton& second = screen.Control<QPushButton>("cmd_Two");
    const Driver user(screen);
    QTest::keyClick(screen.first, Qt::Key_Return);
    EXPECT_EQ(pressed, 0);
    second.setFocus();
    QTest::keyClick(&second, Qt::Key_Enter);
    EXPECT_EQ(pressed, 1);
    frm_Quit quit;  // whose usual answer is No
    const Driver asked(quit);
    asked.Find<QPushButton>("cmd_YesQuit").setFocus();
    QTest::keyClick(&asked.Find<QPushButton>("cmd_YesQuit"), Qt::Key_Return);
    EXPECT_EQ(quit.result(), QDialog::Accepted);
}

TEST_F(Foundation, a_saved_name_gets_the_extension_of_the_chosen_filter)
{
    const QTemporaryDir folder;
    const Host host = Desktop_Host();
    File_Dialog dialog;
    dialog.filter = "PNG (*.png)|*.png|SVG (*.svg)|*.svg|All (*.*)|*.*";
    const auto save = [&](const QString& name, const QString& filter) {
        const testing::Modals modals([&](QDialog& open) {
            auto& box = dynamic_cast<QFileDialog&>(open);
            box.setDirectory(folder.path());
            auto* const filters = box.findChild<QComboBox*>("fileTypeCombo");
            ASSERT_NE(filters, nullptr);
            if (!filter.isEmpty()) {
                filters->setCurrentText(filter);
                emit filters->activated(filters->currentIndex());
                emit filters->textActivated(filter);
            }
            box.findChild<QLineEdit*>("fileNameEdit")->setText(name);
            QMetaObject::invokeMethod(&box, "accept");
        });
        const auto path = host.save_dialog(dialog);
        return path ? QFileInfo(To_Qt(*path)).fileName().toStdString() : std::string("none");
    };
    EXPECT_EQ(save("chart", ""), "chart.png");
    EXPECT_EQ(save("chart", "SVG (*.svg)"), "chart.svg");
    EXPECT_EQ(save("chart.pdf", "SVG (*.svg)"), "chart.pdf");
    EXPECT_EQ(save("chart", "All (*.*)"), "chart");
}

TEST_F(Foundation, an_option_acts_when_the_choice_changes)
{
    Two_Fields screen;
    int chosen = 0;
    QRadioButton* const option = Option("opt_One", "One", [&] { ++chosen; });
    screen.layout()->addWidget(option);
    screen.layout()->addWidget(Option("opt_Two", "Two", {}));
    const Driver user(screen);
    user.Press("opt_One");
    user.Press("opt_One");
    EXPECT_EQ(chosen, 1);
    user.Press("opt_Two");
    user.Press("opt_One");
    EXPECT_EQ(chosen, 2);
}

TEST_F(Foundation, a_control_that_is_not_there_is_an_error)
{
    Two_Fields screen;
    EXPECT_THROW(screen.Control<Entry>("txt_Third"), std::out_of_range);
    EXPECT_THROW(screen.Control<QCheckBox>("txt_First"), std::out_of_range);
}

TEST_F(Foundation, a_screen_that_goes_away_is_told_nothing_by_its_fields)
{
    int told = 0;
    {
        Two_Fields screen;
        const Driver user(screen);
        screen.first->accepted = [&told](const std::string&) { ++told; };
        screen.first->focused = [&told](bool in) { told += in ? 0 : 1; };
        auto* const list = new QComboBox;
        list->setEditable(true);
        screen.layout()->addWidget(list);
        QObject::connect(list->lineEdit(), &QLineEdit::editingFinished, list, [&told] { ++told; });
        user.Type("txt_First", "4");  // the window goes while the field has the focus and is changed
    }
    EXPECT_EQ(told, 0);
}

TEST_F(Foundation, a_screen_remembers_its_size)
{
    {
        Two_Fields screen;
        const Driver user(screen);
        screen.resize(500, 333);
    }
    Two_Fields again;
    EXPECT_EQ(again.size(), QSize(500, 333));
}

TEST_F(Foundation, boxes_offer_their_buttons_and_escape_is_the_careful_answer)
{
    const Host host = Desktop_Host();
    const auto ask = [&](Buttons buttons, QMessageBox::StandardButton press) {
        const testing::Modals modals([press](QDialog& open) {
            auto& box = dynamic_cast<QMessageBox&>(open);
            EXPECT_EQ(box.text(), "two\nlines");
            if (press == QMessageBox::NoButton)
                box.reject();
            else
                box.button(press)->click();
        });
        Message message;
        message.text = "two\nlines";
        message.buttons = buttons;
        return host.messenger(message);
    };
    EXPECT_EQ(ask(Buttons::OK, QMessageBox::Ok), Answer::OK);
    EXPECT_EQ(ask(Buttons::OK_Cancel, QMessageBox::Ok), Answer::OK);
    EXPECT_EQ(ask(Buttons::OK_Cancel, QMessageBox::NoButton), Answer::Cancel);
    EXPECT_EQ(ask(Buttons::Yes_No, QMessageBox::Yes), Answer::Yes);
    EXPECT_EQ(ask(Buttons::Abort_Retry_Ignore, QMessageBox::Abort), Answer::Abort);
    EXPECT_EQ(ask(Buttons::Abort_Retry_Ignore, QMessageBox::Retry), Answer::Retry);
    EXPECT_EQ(ask(Buttons::Retry_Cancel, QMessageBox::Cancel), Answer::Cancel);
}

TEST_F(Foundation, a_box_bears_its_own_title_or_else_the_programs)
{
    const Host host = Desktop_Host();
    std::vector<std::string> titles;
    const testing::Modals modals([&titles](QDialog& open) {
        titles.push_back(open.windowTitle().toStdString());
        open.accept();
    });
    Message message{"text"};
    host.messenger(message);
    message.title = "LOBEMAX";
    host.messenger(message);
    EXPECT_EQ(titles, (std::vector<std::string>{"LOBEMAX Plus", "LOBEMAX"}));
}

TEST_F(Foundation, dialog_filters_are_turned_into_those_of_the_desktop)
{
    EXPECT_EQ(Qt_Filter("LOBEMAX (*.cam)|*.cam|All (*.*)|*.*|"), "LOBEMAX (*.cam);;All (*.*)");
    EXPECT_EQ(Qt_Filter("(*.pts)|*.pts"), "Files (*.pts)");
}

TEST_F(Foundation, the_title_leads_to_home_or_to_the_quit_screen)
{
    Load_Resources();
    frm_Title title;
    const Driver user(title);
    EXPECT_EQ(user.Text("lbl_Program"), "LOBEMAX Plus");
    EXPECT_NE(user.Text("lbl_Release").find("9.0"), std::string::npos);
    user.Press("cmd_Start");
    EXPECT_EQ(title.result(), QDialog::Accepted);
    frm_Title again;
    const Driver other(again);
    other.Press("cmd_Abort");
    EXPECT_EQ(again.result(), QDialog::Rejected);
}

TEST_F(Foundation, escape_on_the_title_goes_on)
{
    Load_Resources();
    frm_Title title;
    const Driver user(title);
    QTest::keyClick(&title, Qt::Key_Escape);
    EXPECT_EQ(title.result(), QDialog::Accepted);
}

TEST_F(Foundation, the_quit_screen_stays_by_default)
{
    frm_Quit quit;
    const Driver user(quit);
    EXPECT_TRUE(user.Find<QPushButton>("cmd_NoQuit").isDefault());
    EXPECT_TRUE(user.Find<QPushButton>("cmd_NoQuit").hasFocus());
    user.Press("cmd_NoQuit");
    EXPECT_EQ(quit.result(), QDialog::Rejected);
}

}  // namespace
}  // namespace lobemax
