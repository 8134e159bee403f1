// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/picture.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <utility>

#include "cli/commands.h"
#include "cli/session.h"
#include "core/text.h"

namespace lobemax::cli {

namespace {

constexpr int least_points = 50;
constexpr int most_points = 10000;
constexpr double most_pixels = 20000.0;  // each way: what a picture of them takes still fits in 2 GiB

/// "WxH" as a size; none for any other text.
std::optional<std::pair<int, int>> Read_Size(const std::string& text)
{
    int width = 0;
    int height = 0;
    const char* const end = text.data() + text.size();
    const auto first = std::from_chars(text.data(), end, width);
    if (first.ec != std::errc{} || first.ptr == end || *first.ptr != 'x')
        return std::nullopt;
    const auto second = std::from_chars(first.ptr + 1, end, height);
    if (second.ec != std::errc{} || second.ptr != end || std::min(width, height) < least_points ||
        std::max(width, height) > most_points)
        return std::nullopt;
    return std::pair(width, height);
}

/// Whether this follows the last point of the file's name, in either case.
bool Ends_in(const std::string& path, std::string_view ending)
{
    const std::string_view name = std::string_view(path).substr(path.rfind('/') + 1);
    const std::size_t point = name.rfind('.');
    return point != std::string_view::npos && Same_Text(name.substr(point + 1), ending);
}

}  // namespace

void Add_Picture_Options(CLI::App& command, Picture_Options& options, const std::string& size)
{
    options.size = size;
    command
        .add_option("--size", options.size,
                    "width and height in points, " + std::to_string(least_points) + " to " +
                        std::to_string(most_points) + " each, which are the pixels of a PNG")
        ->type_name("WxH")
        ->capture_default_str();
    Add_Number(
        command, "--scale", 0.1, 10.0, [&options](double scale) { options.scale = scale; },
        "so many times the pixels of a PNG each way, with its letters and lines; SVG and PDF have none")
        ->type_name("N")
        ->default_str(Shortest(options.scale));
    Add_Output(command, options.output, "picture to write: .png, .svg or .pdf");
}

std::string Refused_Picture(const Picture_Options& options)
{
    const auto size = Read_Size(options.size);
    if (!size)
        return "--size: '" + options.size + "' is no size; write it as 900x600, each from " +
               std::to_string(least_points) + " to " + std::to_string(most_points);
    const bool png = Ends_in(options.output, "png");
    if (!png && !Ends_in(options.output, "svg") && !Ends_in(options.output, "pdf"))
        return "-o: the picture's name must end in .png, .svg or .pdf";
    if (png && std::max(size->first, size->second) * options.scale > most_pixels)
        return "--scale: the picture would have more than " + Shortest(most_pixels) + " pixels each way";
    return {};
}

Picture Picture_of(const Picture_Options& options)
{
    const auto [width, height] = Read_Size(options.size).value();
    return {options.output, width, height, options.scale};
}

int Not_Written(const Session& session, const std::string& path, const std::string& why)
{
    session.Say("'" + path + "' cannot be written" + (why.empty() ? "" : ": " + why));
    return failed;
}

int Draw_to_File(const Session& session, const std::string& path,
                 const std::function<std::optional<bool>(Drawing& drawing, std::string& why)>& work)
{
    std::string why;
    const std::unique_ptr<Drawing> drawing = Open_Drawing(why);
    const std::optional<bool> written = drawing != nullptr ? work(*drawing, why) : std::optional(false);
    if (written == false)
        return Not_Written(session, path, why);
    return written == true ? done : failed;
}

}  // namespace lobemax::cli
