// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/help_viewer.h"

#include <QFile>
#include <QHBoxLayout>
#include <QImage>
#include <QListWidget>
#include <QPainter>
#include <QPainterPath>
#include <QPointer>
#include <QSettings>
#include <QSplitter>
#include <QTextBrowser>
#include <QTextDocument>
#include <QUrl>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <cmath>

#include "motion/law_curves.h"
#include "screens/desk.h"
#include "screens/screen.h"

namespace lobemax::screens {

namespace {

constexpr std::array pages{
    Help_Page{"start", "A cam from start to end"},
    Help_Page{"home", "Home screen"},
    Help_Page{"input", "Motion: the segment table"},
    Help_Page{"laws", "The laws of motion"},
    Help_Page{"conditions", "Polynomials by conditions"},
    Help_Page{"splines", "B-splines"},
    Help_Page{"continuity", "Continuity"},
    Help_Page{"fourier", "Fourier transform"},
    Help_Page{"import", "Measured profiles"},
    Help_Page{"sizing", "Sizing the cam"},
    Help_Page{"animation", "Drawing and animation"},
    Help_Page{"dynamics", "Forces and torques"},
    Help_Page{"vibration", "Vibration and polydyne cams"},
    Help_Page{"compensation", "Torque compensation"},
    Help_Page{"stress", "Contact stress"},
    Help_Page{"linkage", "Linkages"},
    Help_Page{"findings", "Findings and limits"},
    Help_Page{"plots", "Plots"},
    Help_Page{"printing", "Tables, prints and reports"},
    Help_Page{"files", "Files and exports"},
    Help_Page{"cad", "For CAD and machines"},
    Help_Page{"units", "Units and numbers"},
    Help_Page{"preferences", "Preferences"},
    Help_Page{"messages", "Messages"},
};

/// The page of a screen: the first entry that its name begins with.
struct Screen_Page {
    const char* screen;
    const char* page;
};

constexpr std::array screen_pages{
    Screen_Page{"frm_HomeScreen", "home"},
    Screen_Page{"frm_Quit", "home"},
    Screen_Page{"frm_InputData", "input"},
    Screen_Page{"frm_Import_data", "import"},
    Screen_Page{"frm_Arcs", "import"},
    Screen_Page{"frm_Bounds", "conditions"},
    Screen_Page{"frm_Poly", "conditions"},
    Screen_Page{"frm_Knots", "splines"},
    Screen_Page{"frm_Continuity", "continuity"},
    Screen_Page{"frm_FFT", "fourier"},
    Screen_Page{"frm_SizeCam", "sizing"},
    Screen_Page{"frm_Animate", "animation"},
    Screen_Page{"frm_Dynamics", "dynamics"},
    Screen_Page{"frm_ModelType", "vibration"},
    Screen_Page{"frm_Model", "vibration"},
    Screen_Page{"frm_CompCam", "compensation"},
    Screen_Page{"frm_Stress", "stress"},
    Screen_Page{"frm_Link", "linkage"},
    Screen_Page{"frm_CamSlider", "linkage"},
    Screen_Page{"frm_MassProp", "linkage"},
    Screen_Page{"frm_Plot", "plots"},
    Screen_Page{"frm_Lobe", "plots"},
    Screen_Page{"frm_PrintSelect", "printing"},
    Screen_Page{"frm_PrintData", "printing"},
    Screen_Page{"frm_Report", "printing"},
    Screen_Page{"frm_Preferences", "preferences"},
    Screen_Page{"frm_Circles", "preferences"},
    Screen_Page{"frm_Cad", "cad"},
    Screen_Page{"frm_Findings", "findings"},
    Screen_Page{"frm_Limits", "findings"},
    Screen_Page{"frm_Export_Question", "findings"},
};

constexpr QSize picture_size(520, 150);

/// One curve over the length of the segment in a box, scaled to its own extremes, with its axis.
void Draw_Curve(QPainter& painter, const QRectF& box, const std::vector<double>& x, const std::vector<double>& y,
                const QColor& colour, const QColor& ink, const QString& title)
{
    const auto [least, most] = std::minmax_element(y.begin(), y.end());
    const double top = std::max(*most, 0.0);
    const double bottom = std::min(*least, 0.0);
    const double range = std::max(top - bottom, 1e-12);
    const auto place = [&](double at, double value) {
        return QPointF(box.left() + at * box.width(), box.bottom() - (value - bottom) / range * box.height());
    };
    painter.setPen(QPen(ink, 1));
    painter.drawLine(place(0, 0), place(1, 0));
    painter.drawLine(box.topLeft(), box.bottomLeft());
    painter.drawText(QRectF(box.left(), box.top() - 22, box.width(), 18), Qt::AlignCenter, title);
    QPainterPath path(place(x.front(), y.front()));
    for (std::size_t i = 1; i < x.size(); ++i)
        path.lineTo(place(x[i], y[i]));
    painter.setPen(QPen(colour, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(path);
}

/// S, V, A and J of a law side by side, in the colours of the palette.
QImage Law_Picture(const QString& code, const QPalette& palette, double scale)
{
    const Law_Curves curves = Curves_of_Law(From_Qt(code));
    QImage picture(picture_size * scale, QImage::Format_ARGB32_Premultiplied);
    picture.setDevicePixelRatio(scale);
    picture.fill(palette.color(QPalette::Base));
    if (curves.x.empty())
        return picture;
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    const std::array<const std::vector<double>*, 4> rows{&curves.S, &curves.V, &curves.A, &curves.J};
    const std::array<QString, 4> titles{QStringLiteral("S"), QStringLiteral("V  %1").arg(curves.peak_V, 0, 'f', 3),
                                        QStringLiteral("A  %1").arg(curves.peak_A, 0, 'f', 3),
                                        QStringLiteral("J  %1").arg(curves.peak_J, 0, 'f', 1)};
    const double width = picture_size.width() / 4.0;
    for (std::size_t k = 0; k < rows.size(); ++k)
        Draw_Curve(painter, QRectF(static_cast<double>(k) * width + 12, 30, width - 24, picture_size.height() - 42),
                   curves.x, *rows[k], palette.color(QPalette::Highlight), palette.color(QPalette::Text), titles[k]);
    return picture;
}

/// A browser whose pictures "law:MS" are drawn from the law.
class Page_Browser : public QTextBrowser {
public:
    using QTextBrowser::QTextBrowser;
    QVariant loadResource(int type, const QUrl& name) override
    {
        if (type == QTextDocument::ImageResource && name.scheme() == QLatin1String("law"))
            return Law_Picture(name.path().toUpper(), palette(), devicePixelRatioF());
        return QTextBrowser::loadResource(type, name);
    }
};

}  // namespace

std::span<const Help_Page> Help_Pages()
{
    return pages;
}

QString Help_Text(const QString& name)
{
    QFile file(QStringLiteral(":/help/%1.md").arg(name));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(file.readAll());
}

QString Help_Page_of(const QString& screen)
{
    for (const Screen_Page& entry : screen_pages)
        if (screen.startsWith(QLatin1String(entry.screen)))
            return QString::fromUtf8(entry.page);
    return QStringLiteral("start");
}

Help_Viewer::Help_Viewer(QWidget* parent) : QDialog(parent), list_(new QListWidget), text_(new Page_Browser)
{
    setObjectName(QStringLiteral("frm_Help"));
    setWindowTitle(QStringLiteral("Help"));
    setWindowFlags(Qt::Window);  // a window of its own: no screen's wait holds it
    list_->setObjectName(QStringLiteral("lst_Pages"));
    text_->setObjectName(QStringLiteral("txt_Page"));
    for (const Help_Page& page : pages) {
        auto* const item = new QListWidgetItem(QString::fromUtf8(page.title), list_);
        item->setData(Qt::UserRole, QString::fromUtf8(page.name));
    }
    list_->setMinimumWidth(list_->sizeHintForColumn(0) + 24);
    text_->setOpenLinks(false);
    text_->document()->setDocumentMargin(18);
    connect(list_, &QListWidget::currentItemChanged, this, [this](QListWidgetItem* item) {
        if (item != nullptr)
            text_->setMarkdown(Help_Text(item->data(Qt::UserRole).toString()));
    });
    connect(text_, &QTextBrowser::anchorClicked, this, [this](const QUrl& link) { Show_Page(link.path()); });
    auto* const splitter = new QSplitter;
    splitter->addWidget(list_);
    splitter->addWidget(text_);
    splitter->setStretchFactor(1, 1);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(splitter);
    resize(900, 640);
    list_->setCurrentRow(0);
}

void Help_Viewer::Show_Page(const QString& name)
{
    for (int row = 0; row < list_->count(); ++row)
        if (list_->item(row)->data(Qt::UserRole).toString() == name)
            list_->setCurrentRow(row);
}

QString Help_Viewer::Page() const
{
    const QListWidgetItem* const item = list_->currentItem();
    return item == nullptr ? QString() : item->data(Qt::UserRole).toString();
}

void Help_Viewer::setVisible(bool visible)
{
    if (visible && !isVisible())
        Fit_to_Desktop(*this);
    QDialog::setVisible(visible);
}

void Open_Help(const QString& page)
{
    static QPointer<Help_Viewer> viewer;
    if (viewer.isNull()) {
        viewer = new Help_Viewer;
        viewer->setAttribute(Qt::WA_DeleteOnClose);
        viewer->setAttribute(Qt::WA_QuitOnClose, false);
    }
    viewer->Show_Page(page);
    viewer->show();
    viewer->raise();
    viewer->activateWindow();
}

}  // namespace lobemax::screens
