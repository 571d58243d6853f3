// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMenu>

namespace corvane {

class SerialSession;

/// The serial ports of the computer to choose from, listed anew each time it is opened: number,
/// device, what is known of the adapter, and who uses it.
class PortMenu : public QMenu
{
    Q_OBJECT

public:
    /// A choice goes into the session's port entry, and closes an open port as typing does.
    PortMenu(SerialSession &session, QWidget *parent);

private:
    void fill();

    SerialSession &m_session;
};

} // namespace corvane
