// SPDX-License-Identifier: GPL-3.0-or-later
/// A started program for the tests of screens: a fresh design, the scripted user, and settings that nothing else reads.
#pragma once

#include <gtest/gtest.h>

#include <QSettings>

#include "core/design_state.h"
#include "core/startup.h"
#include "files/example_designs.h"
#include "tests/support/driver.h"
#include "tests/support/script.h"

namespace lobemax::testing {

class Desktop_Test : public ::testing::Test {
protected:
    void SetUp() override
    {
        QSettings().clear();
        ASSERT_TRUE(Sub_Main("", {}));
    }
    void TearDown() override { design = {}; }

    static void Build(const char* example) { ASSERT_TRUE(Open_Example(example)); }

    Script script_;
};

inline const Expected_Box Copy_Box{"Use the Alt-PrintScrn key combo to copy the screen to the clipboard"};

}  // namespace lobemax::testing
