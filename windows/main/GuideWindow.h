#pragma once

#include <QWidget>

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
    /// Finds the next place of the text in the search entry, from the top again after the last.
    void findNext();

    QListWidget *lstOutline = nullptr;
    QTextBrowser *txtGuide = nullptr;
    QLineEdit *txtFind = nullptr;

private:
    void fillOutline();
};

} // namespace corvane
