// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/frm_Bounds.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>
#include <array>

#include "core/messages.h"
#include "core/text.h"
#include "core/traps.h"
#include "edit/conditions.h"
#include "edit/door.h"
#include "motion/polynomial.h"
#include "motion/segment_store.h"
#include "motion/spline.h"
#include "paint/print.h"
#include "screens/desk.h"
#include "screens/frm_Knots.h"
#include "screens/frm_Poly.h"
#include "screens/help_viewer.h"

namespace lobemax::screens {

namespace {

constexpr std::array value_boxes{"txt_Sbound", "txt_Vbound", "txt_Abound", "txt_Jbound", "txt_Pbound"};
constexpr std::array value_heads{"S", "V", "A", "J", "Ping"};
constexpr int polynomial_selector = 6;
constexpr int spline_selector = 11;

}  // namespace

frm_Bounds::frm_Bounds(int segment, QWidget* parent)
    : Screen(QStringLiteral("frm_Bounds"), QStringLiteral("Boundary conditions"), parent), segment_(segment)
{
    design.motion.Poly_OK = false;
    Ask_Boundaries(design, segment_);
    const Motion_Group& m = design.motion;
    auto* const head = new QGridLayout;
    const auto pair = [head](int place, const QString& caption, QLabel* value) {
        head->addWidget(new QLabel(caption), 0, 2 * place);
        head->addWidget(value, 0, 2 * place + 1);
    };
    pair(0, QStringLiteral("Segment"), Label(QStringLiteral("lbl_segment"), QString::number(segment)));
    pair(1, QStringLiteral("Global Theta (deg)"),
         Label(QStringLiteral("lbl_start"), To_Qt(Shown(design, m.Shift(segment)))));
    pair(2, QStringLiteral("to"), Label(QStringLiteral("lbl_end"), To_Qt(Shown(design, m.Gamma(segment)))));
    pair(3, QStringLiteral("Local Theta (deg)  0 to"),
         Label(QStringLiteral("lbl_Segangle"), To_Qt(Shown(design, m.Beta_Deg(segment)))));
    head->setColumnStretch(8, 1);
    auto* const count = new Entry(QStringLiteral("txt_NoConds"), QStringLiteral("2 to 40 conditions"));
    count->setMaximumWidth(70);
    count->accepted = [this, count](const std::string& text) {
        if (!Set_No_of_Conditions(design, segment_, text) || text.empty())
            count->Show_Text(std::to_string(Requested_Conditions(design, segment_)));
        Show_Count();
    };
    auto* const counts = new QHBoxLayout;
    auto* const requested = new QLabel(QStringLiteral("N&umber of Conditions Requested"));
    requested->setBuddy(count);
    counts->addWidget(requested);
    counts->addWidget(count);
    counts->addSpacing(24);
    counts->addWidget(new QLabel(QStringLiteral("Number of Conditions Selected")));
    counts->addWidget(Label(QStringLiteral("lbl_Selected")));
    counts->addStretch();

    auto* const grid = new QGridLayout;
    grid->addWidget(new QLabel(QStringLiteral("Local Theta")), 0, 0, Qt::AlignHCenter);
    for (int order = 0; order < static_cast<int>(value_heads.size()); ++order)
        grid->addWidget(new QLabel(QString::fromUtf8(value_heads[static_cast<std::size_t>(order)])), 0, order + 1,
                        Qt::AlignHCenter);
    // The rows stand in the order of the angle: start, the free ones, end.
    for (int line = 0; line <= Last_Condition_Row; ++line) {
        const int k = line;
        if (k == 0 || k == Last_Condition_Row) {
            grid->addWidget(Label(Element("lbl_Theta", k),
                                  k == 0 ? QStringLiteral("0") : To_Qt(Shown(design, m.Beta_Deg(segment)))),
                            line + 1, 0, Qt::AlignHCenter);
        } else {
            auto* const theta = new Entry(Element("txt_Theta", k), QStringLiteral("Local angle of these conditions"));
            theta->moved = [this, line](int columns, int rows) { Move_to(line + rows, columns); };
            Stores(*theta, k, Angle_Box);
            grid->addWidget(theta, line + 1, 0);
        }
        for (int order = 0; order < static_cast<int>(value_boxes.size()); ++order) {
            auto* const box = new Entry(Element(value_boxes[static_cast<std::size_t>(order)], k),
                                        QStringLiteral("Leave empty for no condition"));
            box->moved = [this, line, order](int columns, int rows) { Move_to(line + rows, order + 1 + columns); };
            Stores(*box, k, order);
            grid->addWidget(box, line + 1, order + 1);
        }
    }
    auto* const buttons = new QHBoxLayout;
    const auto add = [buttons](QPushButton* button) { buttons->addWidget(button); };
    add(Button(QStringLiteral("cmd_Cancel"), QStringLiteral("< &Back"), [this] { reject(); }));
    buttons->addStretch();
    add(Button(QStringLiteral("cmd_ClearBounds"), QStringLiteral("Clea&r"), [this] {
        Clear_Conditions(design, segment_);
        Fill();
    }));
    add(Copy_Button());
    add(Button(QStringLiteral("cmd_PlotPrint"), QStringLiteral("&Print Form"), [this] { paint::Print_Form(*this); }));
    add(Button(QStringLiteral("cmd_Help"), QStringLiteral("&Help"), [] { Open_Help(QStringLiteral("conditions")); }));
    buttons->addStretch();
    add(Button(
        QStringLiteral("cmd_Done"), QStringLiteral("&Next >"), [this] { Done(); },
        QStringLiteral("Accept the conditions and calculate")));

    Body().addLayout(head);
    Body().addLayout(counts);
    Body().addLayout(grid);
    Body().addStretch();
    Foot().addLayout(buttons);
    Offer_Undo();
    Fill();
}

void frm_Bounds::Move_to(int row, int column)
{
    if (row < 0 || row > Last_Condition_Row || column < 0 || column > static_cast<int>(value_boxes.size()))
        return;
    const QString name =
        column == 0 ? Element("txt_Theta", row) : Element(value_boxes[static_cast<std::size_t>(column - 1)], row);
    // The angles of both ends are fixed: there is nothing to type.
    if (auto* const entry = findChild<QWidget*>(name))
        entry->setFocus(Qt::TabFocusReason);
}

void frm_Bounds::Stores(Entry& entry, int row, int order)
{
    entry.typed = [this, row, order](const std::string& text) {
        Put_Condition(design, segment_, row, order, text);
        Show_Count();
    };
    entry.accepted = entry.typed;
}

void frm_Bounds::Fill()
{
    Control<Entry>(QStringLiteral("txt_NoConds")).Show_Text(std::to_string(Requested_Conditions(design, segment_)));
    for (int k = 0; k <= Last_Condition_Row; ++k) {
        if (k > 0 && k < Last_Condition_Row)
            Control<Entry>(Element("txt_Theta", k)).Show_Text(design.motion.T_boundary_cond(segment_, k));
        for (int order = 0; order < static_cast<int>(value_boxes.size()); ++order)
            Control<Entry>(Element(value_boxes[static_cast<std::size_t>(order)], k))
                .Show_Text(Bound_Text(design, segment_, k, order));
    }
    Show_Count();
}

void frm_Bounds::Show_Count()
{
    Control<QLabel>(QStringLiteral("lbl_Selected")).setText(QString::number(Count_Filled_Boxes(design, segment_)));
}

void frm_Bounds::Done()
{
    const Motion_Group& m = design.motion;
    Control<Entry>(QStringLiteral("txt_NoConds")).Leave();
    const int selector = m.Seg_Program(segment_);
    if (selector == polynomial_selector) {
        if (!Calc_Polynomial(design, segment_))
            return;
        frm_Poly result(segment_, this);
        Run_Modal(result);
        accept();
    } else if (selector == spline_selector) {
        bool accepted = false;
        Trap("frm_Bounds.cmd_Done", [&] { accepted = Read_Bounds(design, segment_); });
        if (!accepted)
            return;
        Put(design, "No of conditions", At(segment_), std::to_string(int{m.Total_No_of_BCs(segment_)}));
        New_Spline(design, segment_);
        History::Transaction work(Desk_History());
        frm_Knots knots(segment_, this);
        accepted = Run_Modal(knots) == QDialog::Accepted;
        if (accepted)
            work.Commit("knots of segment " + std::to_string(segment_));
        if (accepted)
            accept();
    } else {
        Show_Message("Something is wrong - Data are corrupted", Buttons::OK, Symbol::exclamation);
        design.motion.Poly_OK = false;
    }
}

void frm_Bounds::Follow_Design()
{
    Fill();
}

void frm_Bounds::Close_Box()
{
    const Answer answer = Show_Message(
        "Closing this form with the control box as you have done will abort the calculation.\n"
        "You must click the Next button to complete the calculation.\n"
        "Do you wish to close the form without completing the calculation?",
        Buttons::Yes_No, Symbol::exclamation);
    if (answer != Answer::Yes)
        return;
    design.motion.Poly_OK = false;
    reject();
}

}  // namespace lobemax::screens
