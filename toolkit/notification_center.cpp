#include "toolkit/notification_center.h"

#include <algorithm>

namespace toolkit {

NotificationCenter& NotificationCenter::defaultCenter() {
    static NotificationCenter center;
    return center;
}

void NotificationCenter::addObserver(const std::shared_ptr<const void>& observer, std::string_view name,
                                     const Object* sender, Handler handler) {
    observations_.push_back({++lastId_, observer, observer.get(), std::string(name), sender, std::move(handler)});
}

void NotificationCenter::removeObserver(const void* observer) {
    std::erase_if(observations_, [&](const Observation& each) { return each.address == observer; });
}

void NotificationCenter::removeObserver(const void* observer, std::string_view name, const Object* sender) {
    std::erase_if(observations_, [&](const Observation& each) {
        return each.address == observer && each.name == name && each.sender == sender;
    });
}

void NotificationCenter::post(const Notification& notification) {
    std::vector<std::uint64_t> due;
    for (const Observation& each : observations_)
        if ((each.name.empty() || each.name == notification.name) &&
            (each.sender == nullptr || each.sender == notification.sender))
            due.push_back(each.id);
    for (const std::uint64_t id : due) {
        const auto found = std::ranges::find(observations_, id, &Observation::id);
        if (found == observations_.end())
            continue;
        const std::shared_ptr<const void> held = found->observer.lock();
        if (held == nullptr)
            continue;
        const Handler handler = found->handler; // a copy: the handler may end its own observing
        handler(notification);
    }
}

} // namespace toolkit
