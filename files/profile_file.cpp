// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/profile_file.h"

#include <array>

#include "core/messages.h"
#include "core/traps.h"
#include "files/byte_stream.h"

namespace lobemax {

std::optional<std::string> Read_Profile_Text(const std::string& path)
{
    std::optional<std::string> text;
    Trap("Read_File", [&] {
        File_Source source(path);
        std::string read;
        std::array<char, 65536> buffer{};
        while (const std::size_t count = source.Read(buffer.data(), buffer.size())) {
            read.append(buffer.data(), count);
            if (read.size() > Largest_Profile_File) {
                Show_Message("This file is larger than any profile: 16 MB.", Buttons::OK, Symbol::exclamation);
                return;
            }
        }
        text = std::move(read);
    });
    return text;
}

std::string Name_in_Path(const std::string& path)
{
    return path.substr(path.find_last_of('/') + 1);
}

bool Take_Profile_File(Design_State& design, const std::string& path, const Import_Choice& choice, Profile& profile)
{
    const std::optional<std::string> text = Read_Profile_Text(path);
    if (!text) {
        profile = {};
        return false;
    }
    return Take_Profile(design, *text, Name_in_Path(path), choice, profile);
}

}  // namespace lobemax
