// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTextDocument>
#include <QWidget>

class QLabel;
class QLineEdit;
class QListWidget;
class QTextBrowser;

namespace corvane {

/// Shows the user's guide that is compiled into the program, with an outline of its headings beside
/// it and a search entry.
class GuideWindow : public QWidget
{
    Q_OBJECT

public:
    explicit GuideWindow(QWidget *parent = nullptr);

    /// Brings the heading of a row of the outline to the top of the text.
    void showHeading(int row);
    /// Shows the chapter or section with this heading; an empty one changes nothing.
    void showChapter(const QString &heading);
    /// Finds the next place of the text in the search entry, or the one before, and goes on from
    /// the other end after the last; says so, and when there is none.
    void findNext() { find({}); }
    void findPrevious();

    QListWidget *lstOutline = nullptr;
    QTextBrowser *txtGuide = nullptr;
    QLineEdit *txtFind = nullptr;
    QLabel *lblFound = nullptr;

private:
    void fillOutline();
    void addShortcuts();
    void find(QTextDocument::FindFlags how);
};

} // namespace corvane
