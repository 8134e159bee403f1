// SPDX-License-Identifier: GPL-3.0-or-later
/// A folder of its own that a test of the command line tool works in.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "tests/support/run_cli.h"

namespace lobemax::testing {

class Cli_Folder : public ::testing::Test {
protected:
    Cli_Folder()
        : folder_(::testing::TempDir() + "lobemax_cli_" + std::to_string(::getpid())),
          before_(std::filesystem::current_path())
    {
        std::filesystem::create_directories(folder_);
        std::filesystem::current_path(folder_);
    }
    ~Cli_Folder() override
    {
        std::filesystem::current_path(before_);
        std::filesystem::remove_all(folder_);
    }

    std::string Content(const std::string& name) const
    {
        std::ostringstream text;
        text << std::ifstream(folder_ + "/" + name, std::ios::binary).rdbuf();
        return text.str();
    }
    void Write(const std::string& name, const std::string& content) const
    {
        std::ofstream(folder_ + "/" + name, std::ios::binary) << content;
    }
    bool Exists(const std::string& name) const { return std::filesystem::exists(folder_ + "/" + name); }

    /// Runs the tool with the words of a line.
    static Result Run(const std::string& line) { return Run_Cli(Words(line)); }
    static std::string Show(const std::string& file, const std::string& fields)
    {
        return Run("show " + file + " " + fields).out;
    }
    void Make_Calculated(const std::string& name) const
    {
        ASSERT_EQ(Run("new -o made.cam --rpm 120 " + stamps + segments).status, 0);
        ASSERT_EQ(Run("calc made.cam -o " + name + " --levels svaj " + stamps).status, 0);
    }
    /// A model file with the text of a record changed: what a file may hold that no command writes.
    void Make_Changed(const std::string& from, const std::string& to, const std::string& record,
                      const std::string& value) const
    {
        std::string text = Content(from);
        const std::size_t at = text.find("\"" + record + "\",");
        ASSERT_NE(at, std::string::npos) << record;
        const std::size_t start = at + record.size() + 3;
        text.replace(start, text.find("\r\n", start) - start, value);
        Write(to, text);
    }

    const std::string stamps = "--date 2026-11-21 --time 12:00:00 ";
    const std::string segments = "'R MS 90 0 25' 'D DW 90 25 25' 'F CF 90 25 0' 'D DW 90 0 0'";
    const std::string folder_;

private:
    const std::filesystem::path before_;
};

}  // namespace lobemax::testing
