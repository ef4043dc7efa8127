// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <memory>
#include <utility>

namespace tallyforge {

/// Tells late answers from timely ones, for an object that begins anew again and again: a link that
/// is opened once more, a route that gives way to another. A member of that object; whatever was
/// asked before the last next(), or of an object that is gone, is out of date. One thread only.
class Generation
{
public:
    /// Everything that has been asked so far is out of date from now on.
    void next() { m_life = std::make_shared<char>(); }

    /// A function without arguments that says whether the present generation still lasts. It may
    /// be called after the object has gone: a signal's slot may have deleted it.
    [[nodiscard]] auto watch() const
    {
        return [life = std::weak_ptr<char>(m_life)] { return !life.expired(); };
    }

    /// Wraps call so that it does nothing once the present generation has ended.
    template <typename Call> [[nodiscard]] auto guard(Call call) const
    {
        return [isCurrent = watch(), call = std::move(call)](auto &&...arguments) mutable {
            if (isCurrent()) {
                call(std::forward<decltype(arguments)>(arguments)...);
            }
        };
    }

private:
    std::shared_ptr<char> m_life = std::make_shared<char>();
};

} // namespace tallyforge
