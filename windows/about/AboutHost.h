#pragma once

#include <QtGlobal>

namespace corvane {

/// What the About window needs of the main window.
class AboutHost
{
public:
    virtual ~AboutHost() = default;

    /// Asks the GPIB control to show its own about box.
    virtual void showGpibAbout() = 0;

protected:
    AboutHost() = default;
    Q_DISABLE_COPY_MOVE(AboutHost)
};

} // namespace corvane
