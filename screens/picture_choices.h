// SPDX-License-Identifier: GPL-3.0-or-later
/// Pictures to pick one from, two in a row: each in a frame with its option and its help.
#pragma once

#include <QList>
#include <functional>
#include <string>

#include "forms/form_table.h"
#include "paint/painter_surface.h"
#include "screens/screen.h"

class QGridLayout;
class QRadioButton;

namespace lobemax::screens {

class Picture_Choices {
public:
    Picture_Choices();
    Picture_Choices(const Picture_Choices&) = delete;  // its options point to it
    Picture_Choices& operator=(const Picture_Choices&) = delete;

    struct Picture {
        QString name;   // of the drawing's widget
        QString title;  // above it; empty: the option's caption is the title
        paint::Drawing drawing;
        QSize least;
        const Form_Control& option;
        const Form_Control& help;
        std::function<std::string()> help_text;
    };
    void Add(const Picture& picture);
    /// The pictures' grid, for the screen's layout.
    QGridLayout* Grid() { return grid_; }

    void Pick(int choice);
    /// -1: none is.
    int Picked() const;

private:
    QGridLayout* grid_;  // the screen's, once it is put there
    QList<QRadioButton*> options_;
};

}  // namespace lobemax::screens
