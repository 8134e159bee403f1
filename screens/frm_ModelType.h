// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "screens/picture_choices.h"
#include "screens/screen.h"

namespace lobemax::screens {

/// Which lumped model stands for the follower train of a force-closed cam: four schematics to pick from.
class frm_ModelType : public Screen {
public:
    explicit frm_ModelType(QWidget* parent = nullptr);

private:
    void Next();

    Picture_Choices choices_;
};

/// The vibration screens, from the choice of the model on until the user leaves them, and the sizing screen that makes
/// the profile of a polydyne cam.
void Run_Vibration_Screens(QWidget* parent);

}  // namespace lobemax::screens
