// SPDX-License-Identifier: GPL-3.0-or-later
/// A test of the shop's files: a folder of its own, a clock that stands, the sets and points of the test's design.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <utility>

#include "core/messages.h"
#include "shop/curve_files.h"
#include "tests/support/test_design.h"

namespace lobemax::testing {

class Shop_Test : public ::testing::Test {
protected:
    void SetUp() override
    {
        folder_ = std::filesystem::temp_directory_path() / ("lobemax_shop_" + std::to_string(::getpid()));
        std::filesystem::create_directories(folder_);
        Host host;
        host.date = [] { return "11/22/2026"; };
        host.time = [] { return "10:00"; };
        before_ = Install_Host(std::move(host));
    }
    void TearDown() override
    {
        Install_Host(std::move(before_));
        std::filesystem::remove_all(folder_);
    }

    std::string Folder() const { return folder_.string(); }
    std::string Path(const std::string& name) const { return (folder_ / name).string(); }
    static std::string Read(const std::string& path)
    {
        std::ifstream in(path, std::ios::binary);
        std::ostringstream text;
        text << in.rdbuf();
        return text.str();
    }
    static void Write(const std::string& path, const std::string& text)
    {
        std::ofstream(path, std::ios::binary) << text;
    }

    /// The design's set by a choice, which has to be made.
    static Curve_Set Set(const Curve_Choice& choice = {})
    {
        Made_Curves made = Make_Curve_Set(design, choice);
        EXPECT_TRUE(made.set) << made.refusal;
        return made.set.value_or(Curve_Set{});
    }
    static Curve_Points Points(const Point_Choice& choice = {})
    {
        Made_Points made = Make_Curve_Points(design, choice);
        EXPECT_TRUE(made.points) << made.refusal;
        return made.points.value_or(Curve_Points{});
    }

private:
    std::filesystem::path folder_;
    Host before_;
};

}  // namespace lobemax::testing
