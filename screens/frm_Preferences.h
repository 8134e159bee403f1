// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

#include "forms/preference_choice.h"
#include "screens/screen.h"

namespace lobemax::screens {

/// What the preferences screen needs of the program.
struct Preference_Services {
    std::function<void()> save;  // writes the present fields to disk
    std::function<bool(const std::string& Number_Format)>
        set_format;  // the menu's way; false: the user kept the old one
};

/// The user's defaults, with their present values.
class frm_Preferences : public Screen {
public:
    frm_Preferences(Preference_Services services, QWidget* parent = nullptr);

private:
    Preference_Choice Chosen() const;
    bool Use();

    Preference_Services services_;
};

}  // namespace lobemax::screens
