#pragma once

#include "toolkit/object.h"

#include <string>
#include <utility>
#include <vector>

namespace toolkit {

/// A menu as the sender of a notification: the titles of its items.
class CV_TOOLKIT_EXPORT Menu : public Object {
public:
    explicit Menu(std::vector<std::string> itemTitles) : itemTitles_(std::move(itemTitles)) {} ///< items in their order
    ~Menu() override;

    [[nodiscard]] const std::vector<std::string>& itemTitles() const { return itemTitles_; } ///< in their order

private:
    std::vector<std::string> itemTitles_;
};

} // namespace toolkit
