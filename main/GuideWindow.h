#pragma once

#include <QWidget>

class QLineEdit;
class QTextBrowser;

namespace corvane {

/// Shows the user's guide that is compiled into the program, with its table of contents as links
/// and a search entry.
class GuideWindow : public QWidget
{
    Q_OBJECT

public:
    explicit GuideWindow(QWidget *parent = nullptr);

    /// Finds the next place of the text in the search entry, from the top again after the last.
    void findNext();

    QTextBrowser *txtGuide = nullptr;
    QLineEdit *txtFind = nullptr;
};

} // namespace corvane
