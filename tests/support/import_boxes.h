// SPDX-License-Identifier: GPL-3.0-or-later
/// The messages of an import that several tests meet.
#pragma once

#include "tests/support/script.h"

namespace lobemax::testing {

inline const Expected_Box Profile_Read_Box{"File lobe.txt\n\n   of Cam Profile data successfully read."};

inline const Expected_Box Functions_Saved_Box{
    "The interpolated functions from your imported profile data \n"
    "have been saved within the program for further calculation.\n"
    "You still need to save the model to disk with the File/Save option.\n"
    "When you select the Next button, you will return to the home page\n"
    "and can plot the interpolated functions, size the cam, calculate\n"
    "dynamic properties, and export the cam profile data for manufacture.\n"
    "If you use the Back button, it will reset and lose the imported data."};

}  // namespace lobemax::testing
