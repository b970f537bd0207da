#pragma once

#include <vector>

#include <QAccessible>

#include "qt/ControlView.h"

namespace quillon {

/// The entries of a list, as long as it is open.
class ListEntries {
public:
    explicit ListEntries(ControlView& view) : view_(view) {}
    ~ListEntries();
    ListEntries(const ListEntries&) = delete;
    ListEntries& operator=(const ListEntries&) = delete;

    [[nodiscard]] int count() const;
    [[nodiscard]] QAccessibleInterface* at(int index) const;
    [[nodiscard]] int indexOf(const QAccessibleInterface* entry) const;

private:
    ControlView& view_;
    mutable std::vector<QAccessible::Id> made_; ///< those that were asked for
};

} // namespace quillon
