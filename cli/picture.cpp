// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/picture.h"

#include <QApplication>
#include <QFileInfo>
#include <QPalette>
#include <algorithm>
#include <charconv>
#include <memory>
#include <optional>

#include "cli/commands.h"
#include "cli/session.h"
#include "core/text.h"

namespace lobemax::cli {

namespace {

constexpr int least_points = 50;
constexpr int most_points = 10000;
constexpr double most_pixels = 20000.0;  // each way: what a picture of them takes still fits in 2 GiB

/// "WxH" as a size; none for any other text.
std::optional<QSize> Read_Size(const std::string& text)
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
    return QSize(width, height);
}

QString Ending(const std::string& path)
{
    return QFileInfo(QString::fromStdString(path)).suffix().toLower();
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
    const QString ending = Ending(options.output);
    if (ending != QLatin1String("png") && ending != QLatin1String("svg") && ending != QLatin1String("pdf"))
        return "-o: the picture's name must end in .png, .svg or .pdf";
    if (ending == QLatin1String("png") && std::max(size->width(), size->height()) * options.scale > most_pixels)
        return "--scale: the picture would have more than " + Shortest(most_pixels) + " pixels each way";
    return {};
}

QSize Picture_Size(const Picture_Options& options)
{
    return Read_Size(options.size).value();
}

namespace {

/// What Qt says is left out while this stands.
class Quiet_Qt {
public:
    Quiet_Qt() : before_(qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {})) {}
    ~Quiet_Qt() { qInstallMessageHandler(before_); }
    Quiet_Qt(const Quiet_Qt&) = delete;
    Quiet_Qt& operator=(const Quiet_Qt&) = delete;

private:
    QtMessageHandler before_;
};

/// Black on white while this stands.
class Paper_Palette {
public:
    Paper_Palette() : before_(QApplication::palette())
    {
        QPalette paper = before_;
        paper.setColor(QPalette::Base, Qt::white);
        paper.setColor(QPalette::Text, Qt::black);
        QApplication::setPalette(paper);
    }
    ~Paper_Palette() { QApplication::setPalette(before_); }
    Paper_Palette(const Paper_Palette&) = delete;
    Paper_Palette& operator=(const Paper_Palette&) = delete;

private:
    QPalette before_;
};

}  // namespace

int Draw_to_File(const Session& session, const std::string& path,
                 const std::function<std::optional<bool>(const std::string& path, std::string& why)>& work)
{
    const Quiet_Qt quiet;
    std::unique_ptr<QApplication> own;
    int count = 3;
    char name[] = "lobemax-cli";
    char option[] = "-platform";
    char platform[] = "offscreen";
    char* arguments[] = {name, option, platform, nullptr};
    if (QCoreApplication::instance() == nullptr)
        own = std::make_unique<QApplication>(count, arguments);
    const Paper_Palette paper;
    std::string why;
    const std::optional<bool> written = work(path, why);
    if (written == false)
        session.Say("'" + path + "' cannot be written" + (why.empty() ? "" : ": " + why));
    return written == true ? done : failed;
}

}  // namespace lobemax::cli
