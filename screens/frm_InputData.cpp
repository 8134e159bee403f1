// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/frm_InputData.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <utility>

#include "core/messages.h"
#include "core/points.h"
#include "core/startup.h"
#include "core/text.h"
#include "core/traps.h"
#include "core/units.h"
#include "edit/examples.h"
#include "forms/input_form.h"
#include "forms/size_form.h"
#include "forms/workflow.h"
#include "motion/motion_programs.h"
#include "motion/segments.h"
#include "paint/print.h"
#include "screens/desk.h"
#include "screens/form_rows.h"
#include "screens/help_viewer.h"
#include "screens/status_panel.h"

namespace lobemax::screens {

namespace {

const QStringList kind_names{QStringLiteral("Rise"), QStringLiteral("Fall"), QStringLiteral("Poly"),
                             QStringLiteral("Dwell"), QStringLiteral("Spline")};

QStringList Program_Names()
{
    QStringList names;
    for (const Motion_Program& program : Motion_Programs())
        names.append(To_Qt(program.list_text));
    return names;
}

QStringList Step_Names()
{
    QStringList names;
    for (const std::string& text : Step_Texts(design))
        names.append(To_Qt(text));
    return names;
}

/// The examples in the order of the input screen's list.
const QStringList example_names{
    QStringLiteral("Single Dwell"), QStringLiteral("Double Dwell"),  QStringLiteral("Flat Follower"),
    QStringLiteral("Four Dwell"),   QStringLiteral("Oscillating"),   QStringLiteral("4-bar Linkage"),
    QStringLiteral("4-bar Slider"), QStringLiteral("6-bar Linkage"), QStringLiteral("6-bar Slider")};

/// A drop-down list of the table. The wheel scrolls the table, never the list; arrow keys open it, so that passing an
/// entry is not picking it. A typed text picks an entry once it has all its letters.
class Table_Choice : public QComboBox {
public:
    /// @param length  letters of a typed pick; 0: none is
    /// @param place   place in the list of a typed text, -1 for none
    Table_Choice(const QString& name, const QStringList& entries, std::function<void(int)> picked, const QString& tip,
                 int length = 0, std::function<int(std::string_view)> place = {})
        : length_(length), place_(std::move(place))
    {
        setObjectName(name);
        setToolTip(tip);
        addItems(entries);
        connect(this, &QComboBox::activated, this, [picked = std::move(picked)](int index) { picked(index); });
    }

protected:
    void wheelEvent(QWheelEvent* event) override { event->ignore(); }
    void focusOutEvent(QFocusEvent* event) override
    {
        letters_.clear();
        QComboBox::focusOutEvent(event);
    }
    void keyPressEvent(QKeyEvent* event) override
    {
        const bool arrow = event->key() == Qt::Key_Up || event->key() == Qt::Key_Down;
        if (arrow && (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier) {
            showPopup();
            return;
        }
        const QString text = event->text();
        const bool command = (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != 0;
        if (isEditable() || command || text.isEmpty() || !text.front().isLetterOrNumber()) {
            letters_.clear();
            QComboBox::keyPressEvent(event);
            return;
        }
        letters_ += text;
        if (letters_.size() < length_)
            return;
        const int place = place_ ? place_(From_Qt(std::exchange(letters_, {}))) : -1;
        if (place < 0)
            return;
        setCurrentIndex(place);
        emit activated(place);
    }

private:
    int length_;
    std::function<int(std::string_view)> place_;
    QString letters_;  // typed so far
};

/// Blue for a row that waits, green for one that is calculated, in tones that read on the ground in force.
QColor Row_Colour(bool done, const QPalette& palette)
{
    const bool dark = palette.color(QPalette::Window).lightness() < 128;
    if (done)
        return dark ? QColor(110, 200, 120) : QColor(0, 128, 0);
    return dark ? QColor(130, 165, 255) : QColor(0, 0, 255);
}

const Form_Control& Words_of(const QString& name)
{
    return Control_of(Controls_of_Input(), From_Qt(name));
}

QLabel* Heading(const QString& name, const QString& text = {})
{
    QLabel* const label = Label(name, text);
    QFont bold = label->font();
    bold.setWeight(QFont::DemiBold);
    label->setFont(bold);
    label->setAlignment(Qt::AlignCenter);
    return label;
}

}  // namespace

frm_InputData::frm_InputData(Input_Services services, QWidget* parent)
    : Screen(QStringLiteral("frm_InputData"), To_Qt(Words_of(QStringLiteral("frm_InputData")).caption), parent),
      services_(std::move(services))
{
    Open_Input(design);
    Make_Menu();
    Body().addWidget(Make_Head());
    Body().addWidget(Make_Table(), 1);
    Foot().addWidget(Make_Foot());
    status_ = new Status_Panel;
    Foot().addWidget(status_);
    Fill();
    Refresh();
    Open_at({980, 560});
}

void frm_InputData::Make_Menu()
{
    auto* const bar = new QMenuBar;
    QMenu* const units = bar->addMenu(QStringLiteral("&Units"));
    for (int code = First_Unit_System; code <= Last_Unit_System; ++code) {
        QAction* const action = units->addAction(To_Qt(Words_of_Units(code).menu));
        action->setObjectName(Element("mnu_pick", code));
        action->setCheckable(true);
        On_Pick(action, this, [this, code] {
            const int before = design.identity.WhichUnit;
            if (services_.change_units)
                services_.change_units(code);
            if (design.identity.WhichUnit != before)
                Units_Changed_in_Table(design);
            Fill();
            Refresh();
        });
    }
    QMenu* const help = bar->addMenu(QStringLiteral("&Help"));
    for (const auto& [page, title] : {std::pair{"input", "The segment table"}, std::pair{"laws", "The laws of motion"}})
        connect(help->addAction(QString::fromUtf8(title)), &QAction::triggered, this,
                [name = QString::fromUtf8(page)] { Open_Help(name); });
    QAction* const start = help->addAction(QStringLiteral("Starting angle"));
    start->setObjectName(QStringLiteral("mnu_startangle"));
    On_Pick(start, this, [] { Show_Message(Start_Angle_Help(), Buttons::OK, Symbol::information); });
    Body();
    layout()->setMenuBar(bar);
    Offer_Undo(bar);
}

QWidget* frm_InputData::Make_Head()
{
    auto* const head = new QWidget;
    auto* const row = new QHBoxLayout(head);
    row->setContentsMargins(0, 0, 0, 0);

    auto* const numbers = new QGridLayout;
    int place = 0;
    for (const auto& field : Fields_of_Input()) {
        QWidget* const control = Make_Field(field);
        control->setMinimumWidth(64);
        control->setMaximumWidth(110);
        QLabel* const caption = Make_Caption(field, control);
        caption->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        const int line = place / 2;  // two fields a line
        const int column = 2 * (place++ % 2);
        numbers->addWidget(caption, line, column);
        numbers->addWidget(control, line, column + 1);
    }
    row->addLayout(numbers);

    const auto framed = [row](const char* name, std::initializer_list<QWidget*> widgets) {
        QGroupBox* const frame = Make_Frame(Words_of(QString::fromUtf8(name)));
        auto* const column = new QVBoxLayout(frame);
        for (QWidget* const widget : widgets)
            column->addWidget(widget);
        row->addWidget(frame);
    };
    const auto option = [](const char* name, int k, std::function<void()> chosen) {
        return Make_Option(Words_of(Element(name, k)), std::move(chosen));
    };
    const auto follower = [this](bool translating) {
        return [this, translating] {
            if (design.cam.Translating == translating)
                return;
            Choose_Follower_Motion_on_Input(design, translating);
            Refresh();
        };
    };
    framed("fra_Follower", {option("opt_Folmotion", 0, follower(true)), option("opt_Folmotion", 1, follower(false))});
    const auto function = [this](bool motion) {
        return [this, motion] {
            design.motion.Motion = motion;
            Refresh();
        };
    };
    framed("fra_Function", {option("opt_Function", 0, function(true)), option("opt_Function", 1, function(false))});
    framed("fra_Options", {Make_Check(Words_of(QStringLiteral("chk_Extforce")),
                                      [this](bool on) {
                                          Tick_External_Force(design, on);
                                          Refresh();
                                      }),
                           Make_Check(Words_of(QStringLiteral("chk_ClearOnOpen")), {})});
    const Form_Control& list = Words_of(QStringLiteral("cmb_Examples"));
    auto* const examples = new Table_Choice(
        To_Qt(list.name), example_names,
        [this](int index) {
            if (services_.build_example && services_.build_example(From_Qt(example_names.at(index))))
                Example_Picked(design);
            Fill();
            Refresh();
        },
        To_Qt(list.tip));
    examples->setPlaceholderText(To_Qt(list.caption));
    examples->setCurrentIndex(-1);
    row->addStretch();
    row->addWidget(examples, 0, Qt::AlignTop);
    return head;
}

void frm_InputData::Enter(const Form_Field<Input_Head>& field, const std::string& typed)
{
    Input_Head head = Input_Head_of_Design(design);
    head.clear_rows = Control<QCheckBox>(QStringLiteral("chk_ClearOnOpen")).isChecked();
    {
        const Filling filling(*this);  // a message takes the focus from the field
        Trap(std::string(field.name), [&] { field.enter(design, head, typed); });
    }
    Fill();
    Refresh();
}

QWidget* frm_InputData::Make_Field(const Form_Field<Input_Head>& field)
{
    if (field.text == &Input_Head::cmb_Delta)
        return Make_Step(field);
    Entry* const entry = Make_Entry(field);
    entry->accepted = [this, field](const std::string& text) { Enter(field, text); };
    return entry;
}

QComboBox* frm_InputData::Make_Step(const Form_Field<Input_Head>& field)
{
    const auto enter = [this, field](const std::string& text) {
        if (!Is_Filling() && text != Input_Head_of_Design(design).cmb_Delta)
            Enter(field, text);
    };
    auto* const delta = new Table_Choice(
        To_Qt(field.name), Step_Names(), [enter](int index) { enter(Step_Texts(design).at(std::size_t(index))); },
        To_Qt(field.tip));
    delta->setEditable(true);
    delta->setInsertPolicy(QComboBox::NoInsert);
    delta->setCompleter(nullptr);  // a text counts as it is typed
    connect(delta->lineEdit(), &QLineEdit::editingFinished, this,
            [delta, enter] { enter(From_Qt(delta->currentText())); });
    return delta;
}

QWidget* frm_InputData::Make_Table()
{
    auto* const table = new QWidget;
    auto* const grid = new QGridLayout(table);
    grid->setHorizontalSpacing(6);
    grid->setVerticalSpacing(4);
    const std::array headings{std::pair{"lbl_SegHead", "Seg"},     std::pair{"lbl_RFD", "Motion"},
                              std::pair{"lbl_Motion", "Program"},  std::pair{"lbl_BetaHead", "Beta deg"},
                              std::pair{"lbl_StartHead", "Start"}, std::pair{"lbl_EndHead", "End"},
                              std::pair{"lbl_LowHead", "from"},    std::pair{"lbl_HighHead", "to"}};
    grid->addWidget(Heading(QStringLiteral("lbl_Contour")), 0, 1, 1, 2);
    grid->addWidget(Heading(QStringLiteral("lbl_Angles"), QStringLiteral("Cam angle (deg)")), 0, 3, 1, 3);
    auto* const function = new QHBoxLayout;
    function->setSpacing(6);
    function->addStretch();
    function->addWidget(Heading(QStringLiteral("lbl_Function")));
    function->addWidget(Heading(QStringLiteral("lbl_Unit")));
    function->addStretch();
    grid->addLayout(function, 0, 6, 1, 2);
    for (std::size_t k = 0; k < headings.size(); ++k)
        grid->addWidget(Heading(QString::fromUtf8(headings[k].first), QString::fromUtf8(headings[k].second)), 1,
                        static_cast<int>(k));
    for (int row = 0; row < Max_Segments; ++row)
        Make_Row(*grid, row);
    grid->setColumnStretch(2, 3);
    for (const int k : {3, 6, 7})
        grid->setColumnStretch(k, 2);
    grid->setRowStretch(Max_Segments + 2, 1);
    return Scrolled(table);
}

void frm_InputData::Make_Row(QGridLayout& grid, int row)
{
    Row r;
    r.number = Label(Element("lbl_Segment", row), QString::number(row + 1));
    r.number->setAlignment(Qt::AlignCenter);
    r.kind = new Table_Choice(
        Element("cmb_Motion", row), kind_names,
        [this, row](int index) {
            Pick_Row_Kind(design, row, index);
            Fill_Rows_From(row);
            Refresh();
        },
        QStringLiteral("Select from dropdown or type first letter of list member"), 1, Kind_Place_of);
    r.program = new Table_Choice(
        Element("cmb_Program", row), Program_Names(),
        [this, row](int index) {
            Pick_Row_Program(design, row, index);
            Fill_Rows_From(row);
            Refresh();
        },
        QStringLiteral("Select from dropdown or type first 2 letter code of list member"), 2, Program_Place_of);
    r.beta = new Entry(Element("txt_Beta", row), QStringLiteral("Anglular duration of segment"));
    r.beta->accepted = [this, row](const std::string& text) {
        Entry& entry = *rows_[row].beta;
        const bool read = Trap("txt_Beta", [&] { entry.Show_Text(Enter_Beta(design, row, text)); });
        if (!read)
            Fill_Row(row);
        else if (row == 0 && !text.empty())
            Whole_Turn(design);
        Refresh();
    };
    r.start = Label(Element("lbl_Start", row), {}, QStringLiteral("Initial angle of segment (global)"));
    r.end = Label(Element("lbl_End", row), {}, QStringLiteral("Final angle of segment (global)"));
    const QString tip = QStringLiteral("Do not include prime circle radius in these data");
    r.low = new Entry(Element("txt_Low", row), tip);
    r.low->typed = [this, row](const std::string& text) {
        Enter_Low(design, row, text);
        Fill_Rows_From(row);
        Refresh();
    };
    r.high = new Entry(Element("txt_High", row), tip);
    r.high->typed = [this, row](const std::string& text) {
        Enter_High(design, row, text);
        Fill_Rows_From(row);
        Refresh();
    };
    r.calculate = Button(Element("cmd_CalcSeg", row), QStringLiteral("Calc"), [this, row] {
        Calculate_Row(row);
        Refresh();
    });
    r.plot = Button(Element("cmd_PlotSeg", row), QStringLiteral("Plot"), [this, row] {
        design.motion.Seg = row + 1;
        Update_Segment_Angles(design);
        if (services_.plot_segment)
            services_.plot_segment(row + 1);
    });
    r.print = Button(Element("cmd_PrntSeg", row), QStringLiteral("Print"), [this, row] {
        design.motion.Seg = row + 1;
        Update_Segment_Angles(design);
        if (services_.print_segment)
            services_.print_segment(row + 1);
    });
    for (QPushButton* const button : {r.calculate, r.plot, r.print})
        button->setMaximumWidth(64);
    for (QLabel* const label : {r.start, r.end}) {
        label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        label->setMinimumWidth(52);
    }
    r.all = {r.number, r.kind, r.program, r.beta, r.start, r.end, r.low, r.high, r.calculate, r.plot, r.print};
    for (int k = 0; k < r.all.size(); ++k)
        grid.addWidget(r.all[k], row + 2, k);
    rows_.append(r);
}

QWidget* frm_InputData::Make_Foot()
{
    auto* const foot = new QWidget;
    auto* const row = new QHBoxLayout(foot);
    row->setContentsMargins(0, 0, 0, 0);
    const auto add = [row](QPushButton* button) { row->addWidget(button); };
    add(Button(QStringLiteral("cmd_Cancel"), QStringLiteral("< &Back"), [this] { Cancel(); }));
    row->addStretch();
    add(Button(
        QStringLiteral("cmd_ClearSegs"), QStringLiteral("Clear &Segs"),
        [this] {
            Clear_All_Rows(design);
            Fill();
            Refresh();
        },
        QStringLiteral("Empty all rows")));
    add(Button(
        QStringLiteral("cmd_Clear_SVAJ"), QStringLiteral("Clear &All"),
        [this] {
            Clear_All_Input(design);
            Fill();
            Refresh();
        },
        QStringLiteral("Empty all rows, speed, step and start angle")));
    add(Copy_Button());
    add(Button(QStringLiteral("cmd_PlotPrint"), QStringLiteral("&Print"), [this] { paint::Print_Form(*this); }));
    row->addStretch();
    add(Button(
        QStringLiteral("cmd_CalcAll"), QStringLiteral("Ca&lc All"), [this] { Calculate_All(); },
        QStringLiteral("Calculate every row")));
    add(Button(
        QStringLiteral("cmd_Done"), QStringLiteral("&Next >"), [this] { Done(); },
        QStringLiteral("Accept the motion and check its continuity")));
    return foot;
}

void frm_InputData::Fill()
{
    const Filling filling(*this);
    const Input_Head head = Input_Head_of_Design(design);
    for (const auto& field : Fields_of_Input())
        if (field.text != &Input_Head::cmb_Delta)
            Control<Entry>(To_Qt(field.name)).Show_Text(head.*field.text);
    auto& delta = Control<QComboBox>(QStringLiteral("cmb_Delta"));
    delta.clear();
    delta.addItems(Step_Names());
    delta.setCurrentIndex(delta.findText(To_Qt(head.cmb_Delta)));
    for (int row = 0; row < Max_Segments; ++row)
        Fill_Row(row);
}

void frm_InputData::Fill_Rows_From(int row)
{
    for (int later = row; later < design.motion.No_of_segments; ++later)
        Fill_Row(later);
}

void frm_InputData::Fill_Row(int row)
{
    const Filling filling(*this);
    const Motion_Group& m = design.motion;
    Row& r = rows_[row];
    const int segment = row + 1;
    r.kind->setCurrentIndex(Kind_Place(design, row));
    r.program->setCurrentIndex(Program_Place(design, row));
    if (!r.beta->Dirty())
        r.beta->Show_Text(m.Beta_Deg(segment) == 0.0 ? "" : Shown(design, m.Beta_Deg(segment)));
    if (!r.low->hasFocus() || r.low->Text() != m.Start_Value(segment))
        r.low->Show_Text(m.Start_Value(segment));
    if (!r.high->hasFocus() || r.high->Text() != m.End_Value(segment))
        r.high->Show_Text(m.End_Value(segment));
}

void frm_InputData::Return_to(const QString& focus)
{
    if (auto* const control = focus.isEmpty() ? nullptr : findChild<QWidget*>(focus))
        control->setFocus();
    returned_ = true;
}

void frm_InputData::Refresh()
{
    returned_ = false;
    const Motion_Group& m = design.motion;
    for (int row = 0; row < Max_Segments; ++row)
        Refresh_Row(row);
    const Table_Headings headings = Headings(design);
    Control<QLabel>(QStringLiteral("lbl_Function")).setText(To_Qt(headings.lbl_Function));
    Control<QLabel>(QStringLiteral("lbl_Contour")).setText(To_Qt(headings.lbl_Contour));
    Control<QLabel>(QStringLiteral("lbl_RFD")).setText(To_Qt(headings.lbl_RFD));
    Control<QLabel>(QStringLiteral("lbl_Motion")).setText(To_Qt(headings.lbl_Motion));
    Control<QLabel>(QStringLiteral("lbl_Unit")).setText(To_Qt(headings.lbl_Unit));
    Control<QRadioButton>(Element("opt_Folmotion", design.cam.Translating ? 0 : 1)).setChecked(true);
    Control<QRadioButton>(Element("opt_Function", m.Motion ? 0 : 1)).setChecked(true);
    Control<QRadioButton>(Element("opt_Function", 1)).setEnabled(m.Ext_Force_On != 0);
    Control<QCheckBox>(QStringLiteral("chk_Extforce")).setChecked(m.Ext_Force_On != 0);
    Control<Entry>(QStringLiteral("txt_Omega")).setEnabled(m.Motion);
    for (const int k : {0, 1})
        Control<QRadioButton>(Element("opt_Folmotion", k)).setEnabled(m.Motion);
    Control<QComboBox>(QStringLiteral("cmb_Examples")).setEnabled(m.Motion);
    for (int code = First_Unit_System; code <= Last_Unit_System; ++code)
        findChild<QAction*>(Element("mnu_pick", code))->setChecked(code == design.identity.WhichUnit);
    Control<QPushButton>(QStringLiteral("cmd_CalcAll")).setEnabled(May_Calculate_All(design));
    Control<QPushButton>(QStringLiteral("cmd_Done")).setEnabled(May_Be_Done(design));
    status_->Refresh();
}

void frm_InputData::Refresh_Row(int row)
{
    Row& r = rows_[row];
    const bool used = row < design.motion.No_of_segments;
    for (QWidget* const widget : r.all)
        widget->setVisible(used);
    if (!used)
        return;
    const Row_Openings open = Openings_of_Row(design, row);
    r.program->setEnabled(open.program);
    r.low->setEnabled(open.low);
    r.high->setEnabled(open.high);
    r.calculate->setEnabled(open.calculate);
    r.plot->setEnabled(open.show);
    r.print->setEnabled(open.show);
    r.start->setText(To_Qt(Start_Label(design, row)));
    r.end->setText(To_Qt(End_Label(design, row)));
    QPalette colours = palette();
    colours.setColor(QPalette::WindowText, Row_Colour(open.show, palette()));
    r.number->setPalette(colours);
    r.number->setText(QString::number(row + 1) + (open.show ? QStringLiteral(" \u2713") : QString()));
    r.number->setToolTip(open.show ? QStringLiteral("Calculated") : QStringLiteral("Not calculated yet"));
}

bool frm_InputData::Calculate_Row(int row)
{
    const bool force = !design.motion.Motion;
    // Without a beta there is nothing to ask: the calculation tells of it.
    const bool asks = services_.ask_boundaries && Asks_Conditions(design, row + 1) && Has_Beta(design, row + 1);
    const bool stored = asks ? services_.ask_boundaries(row) : Calc_Segment(design, row);
    if (force)
        Force_Row_Calculated(design);
    Fill_Row(row);
    return stored;
}

void frm_InputData::Calculate_All()
{
    const bool force = !design.motion.Motion;
    // A row that is calculated has been asked for its conditions already.
    Calc_All(design, !force, [this](int row) {
        return design.motion.Seg_Done(row + 1) ? Calc_Segment(design, row) : Calculate_Row(row);
    });
    if (force)
        Force_Row_Calculated(design);
    Refresh();
    auto& next = Control<QPushButton>(QStringLiteral("cmd_Done"));
    if (next.isEnabled())
        next.setFocus();
}

void frm_InputData::Done()
{
    if (Motion_Done(design))
        accept();
    else
        Refresh();
}

void frm_InputData::Cancel()
{
    reject();
}

void frm_InputData::Follow_Design()
{
    Fill();
    Refresh();
}

void frm_InputData::Close_Box()
{
    if (auto* const entry = dynamic_cast<Entry*>(focusWidget()))
        entry->Leave();  // what stands typed counts
    if (!returned_ && design.flags.Calculated && Control<QPushButton>(QStringLiteral("cmd_Done")).isEnabled())
        Done();
    else
        Cancel();
}

}  // namespace lobemax::screens
