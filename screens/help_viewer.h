// SPDX-License-Identifier: GPL-3.0-or-later
/// The program's own help: pages of text, with the curves of the laws drawn by the laws themselves.
#pragma once

#include <QDialog>
#include <QString>
#include <QStringList>
#include <span>

class QListWidget;
class QTextBrowser;

namespace lobemax::screens {

/// A page of the help, by its name in links and its title in the list.
struct Help_Page {
    const char* name;
    const char* title;
};

/// All pages, in the order of the list.
std::span<const Help_Page> Help_Pages();

/// Text of a page as Markdown; empty where there is none of that name. In the page of the laws the peak factors stand
/// filled in, as the laws give them.
QString Help_Text(const QString& name);

/// The page that a screen opens on F1, by the screen's name.
QString Help_Page_of(const QString& screen);

/// A window that stays open and at hand beside the screens, modal ones too: list of pages at the left, the page at the
/// right.
class Help_Viewer : public QDialog {
public:
    explicit Help_Viewer(QWidget* parent = nullptr);
    void Show_Page(const QString& name);
    QString Page() const;
    void setVisible(bool visible) override;

private:
    QListWidget* list_;
    QTextBrowser* text_;
};

/// Opens the help at a page, in one window for the whole program. The program ends without waiting for that window.
void Open_Help(const QString& page);

}  // namespace lobemax::screens
