// SPDX-License-Identifier: GPL-3.0-or-later
/// The library of pictures: the drawing of the commands by Qt.
#include <QApplication>
#include <QPalette>

#include "cli/drawing.h"
#include "paint/cad_sheet.h"
#include "paint/link_plot_charts.h"
#include "paint/painter_surface.h"
#include "paint/plot_charts.h"
#include "paint/report_pages.h"

extern "C" lobemax::cli::Drawing* lobemax_open_drawing();

namespace lobemax::cli {

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

/// The application object that there is, or one of its own that needs no display.
class Application {
public:
    Application()
    {
        if (QCoreApplication::instance() == nullptr)
            own_ = std::make_unique<QApplication>(count_, arguments_);
    }

private:
    int count_ = 3;
    char name_[12] = "lobemax-cli";
    char option_[10] = "-platform";
    char platform_[10] = "offscreen";
    char* arguments_[4] = {name_, option_, platform_, nullptr};
    std::unique_ptr<QApplication> own_;
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

QSize Size_of(const Picture& picture)
{
    return {picture.width, picture.height};
}

class Qt_Drawing final : public Drawing {
public:
    bool Plot(const Design_State& design, int plot_style, const Picture& picture, std::string& why) override
    {
        return paint::Save_Plot(design, plot_style, Size_of(picture), picture.path, picture.scale, &why);
    }
    bool Plot_Links(const Design_State& design, int plot_style, const std::vector<Link_Function>& functions,
                    const Picture& picture, std::string& why) override
    {
        return paint::Save_Link_Plot(design, plot_style, functions, Size_of(picture), picture.path, picture.scale,
                                     &why);
    }
    bool Draw(const std::function<bool(Surface&)>& draw, const Picture& picture, std::string& why) override
    {
        return paint::Save_Drawing(draw, Size_of(picture), picture.path, QApplication::palette(), picture.scale, &why);
    }
    bool Report(const Design_State& design, const Design_Report& report, const std::string& path,
                std::string& why) override
    {
        return paint::Save_Report(design, report, path, &why);
    }
    std::string Sheet(const Cad_Sheet& sheet, std::string& bytes, Cad_Facts& facts) override
    {
        return paint::Make_Sheet(sheet, bytes, facts);
    }

private:
    const Quiet_Qt quiet_;
    const Application application_;
    const Paper_Palette paper_;
};

}  // namespace

}  // namespace lobemax::cli

lobemax::cli::Drawing* lobemax_open_drawing()
{
    return std::make_unique<lobemax::cli::Qt_Drawing>().release();
}
