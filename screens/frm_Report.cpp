// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/frm_Report.h"

#include <QFontDatabase>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "core/messages.h"
#include "core/traps.h"
#include "files/whole_file.h"
#include "forms/print_form.h"
#include "paint/print.h"
#include "paint/report_pages.h"
#include "paint/save_picture.h"
#include "screens/desk.h"
#include "screens/form_rows.h"

namespace lobemax::screens {

namespace {

constexpr std::string_view routine = "Print_Report";

void Save_as_Text(const Design_Report& report)
{
    const Host& host = Installed_Host();
    const std::optional<std::string> path =
        host.save_dialog ? host.save_dialog({"Save the report", "Text (*.txt)|*.txt|All files (*.*)|*.*", 1,
                                             design.identity.Model_Name + ".txt", true})
                         : std::nullopt;
    if (path)
        Trap(routine, [&] { Write_Whole_File(*path, Report_Text(report)); });
}

}  // namespace

frm_Report::frm_Report(QWidget* parent)
    : Screen(QStringLiteral("frm_Report"), QStringLiteral("Design report"), parent), report_(Make_Design_Report(design))
{
    auto* const text = new QPlainTextEdit(To_Qt(Report_Text(report_)));
    text->setObjectName(QStringLiteral("txt_Report"));
    text->setReadOnly(true);
    text->setLineWrapMode(QPlainTextEdit::NoWrap);
    text->setTabChangesFocus(true);
    text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    auto* const buttons = new QHBoxLayout;
    const auto add = [&](const char* name, std::function<void()> work) {
        buttons->addWidget(Make_Button(Control_of(Controls_of_Print(), name), std::move(work)));
    };
    const auto pages = [this] { return paint::Report_Pages(design, report_); };
    add("cmd_Cancel", [this] { reject(); });
    buttons->addStretch();
    add("cmd_Print", [this, pages] { paint::Print_Pages(this, pages(), paint::Prints_on_Letter(design), routine); });
    add("cmd_Preview",
        [this, pages] { paint::Preview_Pages(this, pages(), paint::Prints_on_Letter(design), routine); });
    add("cmd_PDF", [pages] {
        paint::Save_Pages_As("Save the report", design.identity.Model_Name + ".pdf", pages(),
                             paint::Prints_on_Letter(design));
    });
    add("cmd_File", [this] { Save_as_Text(report_); });
    Body().addWidget(text, 1);
    Foot().addLayout(buttons);
    Open_at({860, 680});
}

}  // namespace lobemax::screens
