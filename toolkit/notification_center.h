#pragma once

#include "toolkit/export.h"
#include "toolkit/object.h"
#include "toolkit/value.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace toolkit {

/// A notification as it is delivered. The sender is borrowed for the time of the delivery; null: from nobody.
struct Notification {
    std::string name;                 ///< what happened
    const Object* sender = nullptr;   ///< who posts it; null: nobody in particular
    std::optional<ValueMap> userInfo; ///< more about it
};

/// Delivers notifications within the process, synchronously, in the order in which observers were added. Use from
/// one thread.
class CV_TOOLKIT_EXPORT NotificationCenter {
public:
    using Handler = std::function<void(const Notification&)>; ///< called for each notification that fits

    /// The process's own centre, shared by the host and every plug-in.
    static NotificationCenter& defaultCenter();

    NotificationCenter() = default;
    NotificationCenter(const NotificationCenter&) = delete;
    NotificationCenter& operator=(const NotificationCenter&) = delete;

    /// The observer is known by its address and is not kept alive, but held while it is called. An empty name hears
    /// every name, a null sender every sender. The same observer may be added several times.
    void addObserver(const std::shared_ptr<const void>& observer, std::string_view name, const Object* sender,
                     Handler handler);
    /// Ends every observation of this observer. May be called while a notification is delivered, from a handler and
    /// from the observer's destructor.
    void removeObserver(const void* observer);
    /// Ends the observations of this observer with exactly this name and sender.
    void removeObserver(const void* observer, std::string_view name, const Object* sender);

    /// Observers added meanwhile do not hear it, those removed meanwhile no longer hear it. An exception that an
    /// observer raises ends the delivery and reaches the poster.
    void post(const Notification& notification);

private:
    struct Observation {
        std::uint64_t id;
        std::weak_ptr<const void> observer;
        const void* address;
        std::string name;
        const Object* sender;
        Handler handler;
    };
    std::vector<Observation> observations_;
    std::uint64_t lastId_ = 0;
};

} // namespace toolkit
