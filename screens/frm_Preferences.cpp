// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/frm_Preferences.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>
#include <initializer_list>
#include <utility>

#include "core/traps.h"
#include "screens/desk.h"
#include "screens/frm_Limits.h"

namespace lobemax::screens {

namespace {

struct Choice_Text {
    QString caption;
    QString tip;
};

/// A frame of options "name(0)", "name(1)" and so on, of which one is on.
QGroupBox* Options(const char* name, const QString& title, const QList<Choice_Text>& choices, int chosen)
{
    auto* const frame = new QGroupBox(title);
    auto* const column = new QVBoxLayout(frame);
    for (int i = 0; i < choices.size(); ++i) {
        QRadioButton* const option = Option(Element(name, i), choices[i].caption, {}, choices[i].tip);
        option->setChecked(i == chosen);
        column->addWidget(option);
    }
    column->addStretch();
    return frame;
}

template <std::size_t Count>
QList<Choice_Text> Captions(const std::array<std::string_view, Count>& words)
{
    QList<Choice_Text> list;
    for (const std::string_view word : words)
        list.append({To_Qt(word), {}});
    return list;
}

template <std::size_t Count>
int Place_of(const std::array<std::string_view, Count>& words, std::string_view word)
{
    for (std::size_t i = 0; i < Count; ++i)
        if (words[i] == word)
            return static_cast<int>(i);
    return 0;
}

}  // namespace

frm_Preferences::frm_Preferences(Preference_Services services, QWidget* parent)
    : Screen(QStringLiteral("frm_Preferences"), QStringLiteral("Preferences"), parent), services_(std::move(services))
{
    const Preference_Choice now = Present_Preferences(design);
    auto* const grid = new QGridLayout;
    grid->addWidget(
        Options("opt_Unitdefault", QStringLiteral("Units"), Captions(Unit_Default_Words), now.WhichUnit - 1), 0, 0, 2,
        1);
    grid->addWidget(Options("opt_US", QStringLiteral("Number format"),
                            {{QStringLiteral("US (1,234.5)"), QStringLiteral("Uses period for decimal point")},
                             {QStringLiteral("SI (1.234,5)"), QStringLiteral("Uses comma for decimal point")}},
                            now.Number_Format == "Europe" ? 1 : 0),
                    0, 1);
    grid->addWidget(Options("opt_Camtype", QStringLiteral("Cam type"), Captions(Cam_Type_Words),
                            Place_of(Cam_Type_Words, now.Camtype)),
                    0, 2);
    grid->addWidget(
        Options("opt_Foltype", QStringLiteral("Follower"),
                {{QStringLiteral("Roller"), {}}, {QStringLiteral("Flat"), {}}}, now.Followtype == 2 ? 1 : 0),
        1, 1);
    grid->addWidget(
        Options("opt_Translate", QStringLiteral("Follower motion"),
                {{QStringLiteral("Translating"), {}}, {QStringLiteral("Oscillating"), {}}}, now.Translating ? 0 : 1),
        1, 2);
    grid->addWidget(Options("opt_ScreenSize", QStringLiteral("Screen size"),
                            {{QStringLiteral("Standard"), QStringLiteral("Set all screens to small size")},
                             {QStringLiteral("Full Screen"), QStringLiteral("Set most screens to maximum size")}},
                            now.Full_Screen ? 1 : 0),
                    2, 0);
    QCheckBox* const click =
        Check(QStringLiteral("chk_clickstart"), QStringLiteral("DblClick a .cam file to start program"), {});
    click->setChecked(now.Open_Clicked_File);
    QCheckBox* const aspect =
        Check(QStringLiteral("chk_Aspect_ratio"), QStringLiteral("Apply correction factor to fix circles"), {});
    aspect->setChecked(now.Aspect_Flag);
    auto* const start = new QGroupBox(QStringLiteral("Program"));
    auto* const start_column = new QVBoxLayout(start);
    start_column->addWidget(click);
    start_column->addWidget(aspect);
    start_column->addStretch();
    grid->addWidget(start, 2, 1, 1, 2);

    auto* const buttons = new QHBoxLayout;
    buttons->addWidget(Button(
        QStringLiteral("cmd_Limits"), QStringLiteral("&Limits..."),
        [this] {
            frm_Limits limits(this);
            Run_Modal(limits);
        },
        QStringLiteral("What a design shall keep within")));
    buttons->addStretch();
    buttons->addWidget(Button(
        QStringLiteral("cmd_UseNow"), QStringLiteral("&Use These Now but Don't Save Them"),
        [this] {
            if (Use())
                accept();
        },
        QStringLiteral("Apply to this run of program only")));
    buttons->addWidget(Button(
        QStringLiteral("cmd_Save"), QStringLiteral("Use Now and &Save Settings to Disk"),
        [this] {
            if (!Use())
                return;
            if (services_.save)
                services_.save();
            accept();
        },
        QStringLiteral("Use and save for all future runs of program")));
    buttons->addWidget(
        Button(QStringLiteral("cmd_Exit"), QStringLiteral("E&xit with no changes"), [this] { reject(); }));

    Body().addLayout(grid);
    Foot().addLayout(buttons);
    Stay_Small();
}

Preference_Choice frm_Preferences::Chosen() const
{
    const auto place = [this](const char* name, int count) {
        for (int i = 0; i < count; ++i)
            if (Control<QRadioButton>(Element(name, i)).isChecked())
                return i;
        return 0;
    };
    Preference_Choice choice;
    choice.WhichUnit = place("opt_Unitdefault", static_cast<int>(Unit_Default_Words.size())) + 1;
    choice.Number_Format = place("opt_US", 2) == 1 ? "Europe" : "USA";
    choice.Camtype = std::string(
        Cam_Type_Words.at(static_cast<std::size_t>(place("opt_Camtype", static_cast<int>(Cam_Type_Words.size())))));
    choice.Followtype = place("opt_Foltype", 2) + 1;
    choice.Translating = place("opt_Translate", 2) == 0;
    choice.Full_Screen = place("opt_ScreenSize", 2) == 1;
    choice.Open_Clicked_File = Control<QCheckBox>(QStringLiteral("chk_clickstart")).isChecked();
    choice.Aspect_Flag = Control<QCheckBox>(QStringLiteral("chk_Aspect_ratio")).isChecked();
    return choice;
}

bool frm_Preferences::Use()
{
    const Preference_Choice choice = Chosen();
    if (choice.Number_Format != design.identity.Number_Format && services_.set_format &&
        !services_.set_format(choice.Number_Format))
        return false;
    return Trap("frm_Preferences.Use", [&] { Apply_Preferences(design, choice); });
}

}  // namespace lobemax::screens
