// SPDX-License-Identifier: GPL-3.0-or-later
/// What the check of the design adds to the charts of a screen.
#pragma once

#include <QVBoxLayout>
#include <functional>

#include "truth/check.h"

namespace lobemax::paint {
class Chart;
}

namespace lobemax::screens {

class Check_Mark;

/// The mark of a screen in a line of its own.
Check_Mark* Add_Mark(QVBoxLayout& column, Finding_Place place, std::function<void()> pressed);

/// The limits of a row on its chart, and its true values beside it where they are wanted and known.
/// @param there  whether the chart shows the row; nothing is shown where it does not
void Show_True_Row(paint::Chart& chart, int row, bool there, bool wanted);

}  // namespace lobemax::screens
