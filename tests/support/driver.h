// SPDX-License-Identifier: GPL-3.0-or-later
/// The hands of the desktop's tests: they type into the real controls of a screen, by name, and read what it shows.
#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QTest>
#include <QWidget>
#include <functional>
#include <stdexcept>
#include <string>
#include <utility>

#include "screens/screen.h"

namespace lobemax::testing {

/// Drives the controls of one window; a name that does not exist, or a control that is disabled or hidden, fails the
/// test where a user could not have reached it either.
class Driver {
public:
    explicit Driver(QWidget& window) : window_(window)
    {
        window_.show();
        QApplication::setActiveWindow(&window_);
        QApplication::processEvents();
    }

    template <class Widget>
    Widget& Find(const QString& name) const
    {
        auto* const found = dynamic_cast<Widget*>(window_.findChild<QWidget*>(name));
        if (found == nullptr)
            throw std::out_of_range("no control " + name.toStdString());
        return *found;
    }

    /// Replaces the text of an entry as a user does: click into it, select all, type. The field is not left.
    void Type(const QString& name, const QString& text) const
    {
        auto& entry = Find<QLineEdit>(name);
        Expect_Reachable(entry, name);
        QTest::mouseClick(&entry, Qt::LeftButton);
        entry.setFocus();
        entry.selectAll();
        if (text.isEmpty())
            QTest::keyClick(&entry, Qt::Key_Delete);
        else
            QTest::keyClicks(&entry, text);
    }
    /// Types and leaves the field with the tabulator.
    void Fill(const QString& name, const QString& text) const
    {
        Type(name, text);
        Leave(name);
    }
    void Leave(const QString& name) const
    {
        QTest::keyClick(&Find<QLineEdit>(name), Qt::Key_Tab);
        QApplication::processEvents();
    }
    void Enter(const QString& name) const
    {
        QTest::keyClick(&Find<QLineEdit>(name), Qt::Key_Return);
        QApplication::processEvents();
    }
    /// Presses a button, check box or option.
    void Press(const QString& name) const
    {
        auto& button = Find<QAbstractButton>(name);
        Expect_Reachable(button, name);
        button.click();
        QApplication::processEvents();
    }
    /// Picks an entry of a drop-down list by its text, as a user does.
    void Pick(const QString& name, const QString& text) const
    {
        auto& list = Find<QComboBox>(name);
        Expect_Reachable(list, name);
        const int index = list.findText(text);
        ASSERT_GE(index, 0) << name.toStdString() << " has no entry " << text.toStdString();
        list.setCurrentIndex(index);
        emit list.activated(index);
        emit list.textActivated(text);
        QApplication::processEvents();
    }

    /// What a label, entry, button or list shows.
    std::string Text(const QString& name) const
    {
        const auto* const widget = &Find<QWidget>(name);
        if (const auto* label = qobject_cast<const QLabel*>(widget))
            return label->text().toStdString();
        if (const auto* entry = qobject_cast<const QLineEdit*>(widget))
            return entry->text().toStdString();
        if (const auto* button = qobject_cast<const QAbstractButton*>(widget))
            return button->text().toStdString();
        if (const auto* list = qobject_cast<const QComboBox*>(widget))
            return list->currentText().toStdString();
        throw std::out_of_range(name.toStdString() + " shows no text");
    }
    bool Enabled(const QString& name) const { return Find<QWidget>(name).isEnabled(); }
    bool Visible(const QString& name) const { return Find<QWidget>(name).isVisible(); }
    bool Checked(const QString& name) const { return Find<QAbstractButton>(name).isChecked(); }
    std::string Tip(const QString& name) const { return Find<QWidget>(name).toolTip().toStdString(); }

private:
    static void Expect_Reachable(const QWidget& widget, const QString& name)
    {
        EXPECT_TRUE(widget.isEnabled()) << name.toStdString() << " is disabled";
        EXPECT_TRUE(widget.isVisible()) << name.toStdString() << " is hidden";
    }

    QWidget& window_;
};

/// Plays the modal screens that open while it lives; each one must be closed by the player.
class Modals {
public:
    explicit Modals(screens::Modal_Player player) : before_(screens::Play_Modals(std::move(player))) {}
    ~Modals() { screens::Play_Modals(std::move(before_)); }
    Modals(const Modals&) = delete;
    Modals& operator=(const Modals&) = delete;

private:
    screens::Modal_Player before_;
};

}  // namespace lobemax::testing
