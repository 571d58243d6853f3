// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QRadioButton>

#include <array>
#include <concepts>

namespace corvane {

/// The controls of a control array, by their index.
template <class Control, std::size_t count>
class ControlArray : public std::array<Control *, count>
{
public:
    Control *&operator[](auto index) { return this->at(static_cast<std::size_t>(index)); }
    Control *operator[](auto index) const { return this->at(static_cast<std::size_t>(index)); }
    [[nodiscard]] bool holds(int index) const
    {
        return index >= 0 && index < static_cast<int>(count);
    }

    /// A click on a button, or the choice of an option, calls the owner's handler with the index.
    template <class Owner>
    void connectTo(Owner *owner, void (Owner::*handler)(int)) const
    {
        for (std::size_t i = 0; i < count; ++i) {
            const auto call = [owner, handler, index = static_cast<int>(i)] {
                (owner->*handler)(index);
            };
            if constexpr (std::same_as<Control, QRadioButton>)
                QObject::connect((*this)[i], &QRadioButton::toggled, owner, [call](bool on) {
                    if (on)
                        call();
                });
            else
                QObject::connect((*this)[i], &Control::clicked, owner, call);
        }
    }
};

} // namespace corvane
