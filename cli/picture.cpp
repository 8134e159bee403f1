// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/picture.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPalette>
#include <QTemporaryFile>
#include <charconv>
#include <cstdio>

#include "cli/commands.h"

namespace lobemax::cli {

std::optional<QSize> Picture_Size(const std::string& text)
{
    constexpr int least = 50;
    constexpr int most = 10000;
    int width = 0;
    int height = 0;
    const char* const end = text.data() + text.size();
    const auto first = std::from_chars(text.data(), end, width);
    if (first.ec != std::errc{} || first.ptr == end || *first.ptr != 'x')
        return std::nullopt;
    const auto second = std::from_chars(first.ptr + 1, end, height);
    if (second.ec != std::errc{} || second.ptr != end || std::min(width, height) < least ||
        std::max(width, height) > most)
        return std::nullopt;
    return QSize(width, height);
}

bool Is_Picture(const std::string& path)
{
    const QString ending = QFileInfo(QString::fromStdString(path)).suffix().toLower();
    return ending == QLatin1String("png") || ending == QLatin1String("svg") || ending == QLatin1String("pdf");
}

int Draw_to_File(const std::string& path, const std::function<bool(const std::string& temporary)>& work)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_LOGGING_RULES", "*=false");  // what Qt says of a missing display is of no use here
    int count = 1;
    char name[] = "lobemax-cli";
    char* arguments[] = {name, nullptr};
    QApplication application(count, arguments);
    QPalette paper;
    paper.setColor(QPalette::Base, Qt::white);
    paper.setColor(QPalette::Text, Qt::black);
    QApplication::setPalette(paper);
    const QFileInfo target(QString::fromStdString(path));
    QTemporaryFile temporary(target.absolutePath() + QStringLiteral("/.XXXXXX.") + target.suffix());
    if (!temporary.open()) {
        std::fprintf(stderr, "lobemax-cli: '%s' cannot be written\n", path.c_str());
        return failed;
    }
    temporary.close();
    if (!work(temporary.fileName().toStdString()))
        return failed;
    QFile::setPermissions(temporary.fileName(),
                          QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther);
    if (std::rename(temporary.fileName().toLocal8Bit().constData(),
                    target.absoluteFilePath().toLocal8Bit().constData()) != 0) {
        std::fprintf(stderr, "lobemax-cli: '%s' cannot be written\n", path.c_str());
        return failed;
    }
    temporary.setAutoRemove(false);
    return done;
}

}  // namespace lobemax::cli
