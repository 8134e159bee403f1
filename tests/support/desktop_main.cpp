// SPDX-License-Identifier: GPL-3.0-or-later
/// The desktop's tests run on Qt's offscreen platform, with settings of their own that nothing else reads.
#include <gtest/gtest.h>

#include <QApplication>
#include <QSettings>
#include <QTemporaryDir>

int main(int argc, char** argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QTemporaryDir settings;
    QSettings::setDefaultFormat(QSettings::IniFormat);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, settings.path());
    QApplication application(argc, argv);
    QApplication::setStyle(QStringLiteral("Fusion"));
    QApplication::setOrganizationName(QStringLiteral("Lobemax"));
    QApplication::setApplicationName(QStringLiteral("lobemax-tests"));
    return RUN_ALL_TESTS();
}
