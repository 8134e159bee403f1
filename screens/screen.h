// SPDX-License-Identifier: GPL-3.0-or-later
/// What every screen is made of: a dialog whose controls bear fixed names, entries that are validated on
/// leaving the field or Enter and only after a change, and modal screens that a test can play.
///
/// Every control's objectName is its name; an element of a control array carries its index: "txt_Beta(3)".
#pragma once

#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QString>
#include <functional>
#include <string>
#include <string_view>

class QAbstractButton;
class QAction;
class QCheckBox;
class QMenuBar;
class QPushButton;
class QRadioButton;
class QScrollArea;
class QVBoxLayout;

namespace lobemax::screens {

/// Text of the logic (UTF-8) as Qt shows it, and back.
QString To_Qt(std::string_view text);
std::string From_Qt(const QString& text);

/// Name of an element of a control array.
QString Element(const char* name, int index);

/// Runs what the user asked of a control, under its trap: a fault is told with the names of screen and control, and the
/// screen stays open.
/// @return true when all went well
bool Run_Guarded(const QObject& control, const std::function<void()>& work);

/// The same without a step of the history: for what comes with each key.
bool Run_Guarded_Key(const QObject& control, const std::function<void()>& work);

/// Runs work, guarded, each time a menu entry is picked, as long as its owner lives.
void On_Pick(QAction* entry, QObject* owner, std::function<void()> work);

/// A text field that is validated when it loses the focus or Enter is pressed, and only after the user changed it.
///
/// A text that is no whole number is read as the number that it begins with: that is what `accepted` gets and the field
/// shows, and a mark in the field tells what was cut, until its text changes again. A field of words says so by
/// `Takes_Words`.
///
/// Its functions run guarded; after a fault in `accepted` the field shows the text it had before the user changed it.
class Entry : public QLineEdit {
public:
    explicit Entry(const QString& name, const QString& tip = {}, QWidget* parent = nullptr);

    /// Called with the text of a changed field on leaving it or on Enter. The field counts as unchanged before the
    /// call, so a message box inside it, which takes the focus, does not call it again.
    std::function<void(const std::string& text)> accepted;
    /// Called on each change by the user, at once.
    std::function<void(const std::string& text)> typed;
    /// Called with true when the field takes the focus, with false when it loses it.
    std::function<void(bool)> focused;
    /// Where set, the arrow keys and the wheel step the number of the field: +1 or -1, ten times that with Shift. The
    /// function returns the new text; it is accepted at once. An empty answer changes nothing.
    std::function<std::string(const std::string& text, int steps)> stepped;
    /// Where set, an arrow key goes from field to field of a table: it is told by how many columns and rows.
    /// Right and Left do so from the end and the beginning of the text, and of one selected whole.
    std::function<void(int columns, int rows)> moved;

    /// Shows a text that the program sets: the field counts as unchanged.
    void Show_Text(std::string_view text);
    std::string Text() const { return From_Qt(text()); }
    void Takes_Words() { numeric_ = false; }
    /// What was cut from the text that was last accepted; empty: nothing.
    std::string Cut() const;
    bool Dirty() const { return dirty_; }
    /// Validates a changed field now, as leaving it does.
    void Leave();

protected:
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    void Step(int steps);
    bool Moves(const QKeyEvent& event) const;
    void Mark_Cut(const std::string& sentence);
    QAction* cut_ = nullptr;  // the mark
    bool numeric_ = true;
    bool dirty_ = false;
    QString before_;           // the user's changes: what the program showed, or the user's last accepted text
    int wheel_remainder_ = 0;  // fine wheels turn by parts of a notch
};

/// Makers of named controls, whose functions run guarded. The text carries its access key as "&X".
///
/// Enter presses the button that has the focus, as the space bar does.
///
/// A button first leaves the entry that has the focus, as a click does of itself and an access key does not; it does
/// nothing when that disabled it.
QPushButton* Button(const QString& name, const QString& text, std::function<void()> pressed, const QString& tip = {});
/// cmd_Copy of every screen.
QPushButton* Copy_Button(const QString& text = QStringLiteral("&Copy"));
QCheckBox* Check(const QString& name, const QString& text, std::function<void(bool)> ticked, const QString& tip = {});
/// Calls chosen() when the choice changes, not when the chosen option is pressed once more.
QRadioButton* Option(const QString& name, const QString& text, std::function<void()> chosen, const QString& tip = {});
QLabel* Label(const QString& name, const QString& text = {}, const QString& tip = {});
/// A drop-down list; picked(index) is called when the user picks an entry, not when the program sets one.
QComboBox* Choice(const QString& name, const QStringList& entries, std::function<void(int)> picked,
                  const QString& tip = {});

/// The part of the desktop that a window may cover.
using Available_Geometry = std::function<QRect(const QWidget& window)>;
/// What tells that part in place of the desktop's own screen; returns the one before. Empty: the screen does.
Available_Geometry Use_Available_Geometry(Available_Geometry available);

/// Makes a window that is about to be shown no larger than the desktop, and brings it wholly onto it.
void Fit_to_Desktop(QWidget& window);

/// Scrolls its content where the window has no room for it. It asks for the size of its content, does with less, is no
/// tab stop, and shows the control that takes the focus.
QScrollArea* Scrolled(QWidget* content);

/// The Tab key goes through the controls of a window as they stand in its layouts: row by row in a grid.
void Order_Tabs(QWidget& window);

/// Names what Undo and Redo would take back.
void Show_Undo(QAction& undo, QAction& redo);

/// A screen: a resizable dialog that remembers its size and place under its name, fits the desktop, and opens its page
/// of the help on F1.
class Screen : public QDialog {
public:
    Screen(const QString& name, const QString& title, QWidget* parent);
    ~Screen() override;
    void setVisible(bool visible) override;

    /// A control by its name. @throws std::out_of_range where there is none of that kind
    template <class Widget>
    Widget& Control(const QString& name) const
    {
        // By the type itself: classes without a meta-object of their own would pass for their bases.
        auto* const found = dynamic_cast<Widget*>(findChild<QWidget*>(name));
        if (found == nullptr)
            No_Control(name);
        return *found;
    }

protected:
    /// While the screen fills its fields the events of its controls are ignored.
    class Filling {
    public:
        explicit Filling(Screen& screen) : screen_(screen) { ++screen_.filling_; }
        ~Filling() { --screen_.filling_; }
        Filling(const Filling&) = delete;
        Filling& operator=(const Filling&) = delete;

    private:
        Screen& screen_;
    };
    bool Is_Filling() const { return filling_ > 0; }

    /// Gives the screen the menu Edit: Undo and Redo of what was accepted on it. @param bar  a menu bar that it has
    void Offer_Undo(QMenuBar* bar = nullptr);
    /// The design was taken back or forth: all controls follow it.
    virtual void Follow_Design() {}

    /// Size of the screen where the user has not given it another: larger where the content needs it, smaller where the
    /// desktop is.
    void Open_at(const QSize& size);
    /// Where the content of the screen goes: it scrolls where the desktop is too small for it.
    QVBoxLayout& Body();
    /// What stands under the content and stays in view: buttons, lamps.
    QVBoxLayout& Foot();
    /// A question or a short choice has nothing to show that "Full Screen" would show more of.
    void Stay_Small() { stays_small_ = true; }

    /// Validates the entry that has the focus, as leaving it does: for screens whose closing stores something.
    void Leave_Entry();

    /// Closing the window (close box or Escape) asks the screen first: most act as one of their buttons.
    virtual void Close_Box() { reject(); }
    /// The Escape key; where closing asks a question that Escape would answer with No it must not ask again and again.
    virtual void Escape() { Close_Box(); }

    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    [[noreturn]] void No_Control(const QString& name) const;
    void Make_Parts();
    void Focus_First();
    QSize Whole() const;
    int filling_ = 0;
    bool placed_ = false;  // where the user left it
    bool stays_small_ = false;
    bool tabs_ordered_ = false;
    QVBoxLayout* body_ = nullptr;
    QVBoxLayout* foot_ = nullptr;
};

/// Shows a screen and waits until it closes; returns its result. Only the windows that it stands over wait for it: the
/// help stays at hand. A test that has installed a player gets the open
/// screen instead of a user, and must close it.
int Run_Modal(QDialog& screen);

/// What plays modal screens in place of a user; returns the one before. Empty: the user does.
using Modal_Player = std::function<void(QDialog&)>;
Modal_Player Play_Modals(Modal_Player player);

}  // namespace lobemax::screens
