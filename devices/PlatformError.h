// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/Literals.h"

#include <QString>

#include <exception>

namespace corvane {

/// A platform operation failed. The description is for the technician: what failed, at which
/// device, and what to do about it.
class PlatformError : public std::exception
{
public:
    explicit PlatformError(QString description)
        : m_description(std::move(description))
        , m_what(m_description.toStdString())
    {
    }

    [[nodiscard]] const QString &description() const { return m_description; }
    [[nodiscard]] const char *what() const noexcept override { return m_what.c_str(); }

private:
    QString m_description;
    std::string m_what;
};

} // namespace corvane
