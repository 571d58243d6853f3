// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

#include <functional>

namespace corvane {

/// A file that is dropped on a window, or on any box in it, is loaded: the boxes would take it for
/// a text. Several files are refused; what is no file of this computer goes its usual way.
class ListDrop : public QObject
{
    Q_OBJECT

public:
    /// For the window and all that is in it by now. `load` gets the file's path, when the drop is
    /// over: it may ask the user.
    ListDrop(QWidget &window, std::function<void(const QString &path)> load);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    const std::function<void(const QString &)> m_load;
};

} // namespace corvane
