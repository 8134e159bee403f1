// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/help_viewer.h"

#include <QListWidget>
#include <QRegularExpression>
#include <QTextBrowser>
#include <QUrl>

#include "motion/motion_programs.h"
#include "screens/resources.h"
#include "tests/support/desktop_design.h"

namespace lobemax {
namespace {

using namespace screens;

class Help : public testing::Desktop_Test {
protected:
    void SetUp() override
    {
        Desktop_Test::SetUp();
        Load_Resources();
    }
};

TEST_F(Help, every_page_has_its_text_and_every_link_its_page)
{
    for (const Help_Page& page : Help_Pages()) {
        const QString text = Help_Text(page.name);
        EXPECT_GT(text.size(), 200) << page.name;
        QRegularExpressionMatchIterator links = QRegularExpression("[^!]\\[[^\\]]*\\]\\(([a-z]+)\\)").globalMatch(text);
        while (links.hasNext()) {
            const QString target = links.next().captured(1);
            EXPECT_FALSE(Help_Text(target).isEmpty()) << page.name << " -> " << target.toStdString();
        }
    }
    EXPECT_TRUE(Help_Text("nowhere").isEmpty());
}

TEST_F(Help, every_closed_form_law_has_its_entry)
{
    const QString laws = Help_Text("laws");
    for (const Motion_Program& program : Motion_Programs())
        if (program.kinds == "RF") {
            EXPECT_TRUE(laws.contains("(law:" + To_Qt(program.code) + ")")) << program.code;
        }
}

TEST_F(Help, a_link_turns_the_page_and_pictures_are_drawn)
{
    Help_Viewer viewer;
    const testing::Driver user(viewer);
    EXPECT_EQ(viewer.Page(), "start");
    auto& text = user.Find<QTextBrowser>("txt_Page");
    emit text.anchorClicked(QUrl("laws"));
    EXPECT_EQ(viewer.Page(), "laws");
    EXPECT_FALSE(text.loadResource(QTextDocument::ImageResource, QUrl("law:MS")).isNull());
    EXPECT_TRUE(text.toPlainText().contains("Modified sine"));
}

TEST_F(Help, opens_one_window_for_the_program)
{
    Open_Help("units");
    Open_Help("laws");
    std::vector<Help_Viewer*> viewers;
    for (QWidget* const window : QApplication::topLevelWidgets())
        if (auto* const viewer = dynamic_cast<Help_Viewer*>(window))
            viewers.push_back(viewer);
    ASSERT_EQ(viewers.size(), 1U);
    EXPECT_EQ(viewers.front()->Page(), "laws");
    viewers.front()->close();
}

}  // namespace
}  // namespace lobemax
