// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "screens/picture_choices.h"
#include "screens/screen.h"

namespace lobemax::screens {

/// Which linkage the follower arm drives: four schematics to pick from.
class frm_LinkageType : public Screen {
public:
    explicit frm_LinkageType(QWidget* parent = nullptr);

private:
    void Next();

    Picture_Choices choices_;
};

/// The linkage screens, from the choice of the train on until the user leaves them, and the sizing screen where the
/// motion is wanted at the other end of the train.
void Run_Linkage_Screens(QWidget* parent);

}  // namespace lobemax::screens
