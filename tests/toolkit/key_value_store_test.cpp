#include "toolkit/key_value_store.h"

#include <functional>
#include <gtest/gtest.h>

namespace toolkit {
namespace {

using Keys = std::vector<std::string>;

class Listener final : public StoreObserver {
public:
    void storeDidWrite(KeyValueStore& store, std::string_view key) override {
        heard.emplace_back(key);
        if (meanwhile)
            meanwhile(store);
    }
    Keys heard;
    std::function<void(KeyValueStore&)> meanwhile;
};

TEST(KeyValueStore, HoldsWhatWasWritten) {
    KeyValueStore store;
    store.setValueForKey(Value(5), "CVRed");
    EXPECT_EQ(store.valueForKey("CVRed"), Value(5));
    EXPECT_TRUE(store.valueForKey("CVGreen").isAbsent());
}

TEST(KeyValueStore, AnAbsentValueRemovesTheEntry) {
    KeyValueStore store;
    store.setValueForKey(Value(5), "CVRed");
    store.setValueForKey(Value(), "CVRed");
    EXPECT_TRUE(store.entries().empty());
}

TEST(KeyValueStore, ObserversHearEveryWrite) {
    KeyValueStore store;
    Listener listener;
    store.addObserver(listener);
    store.setValueForKey(Value(1), "a");
    store.setValueForKey(Value(2), "b");
    EXPECT_EQ(listener.heard, Keys({"a", "b"}));
}

TEST(KeyValueStore, ObserversHearAnEqualWriteToo) {
    KeyValueStore store;
    store.setValueForKey(Value(1), "a");
    Listener listener;
    store.addObserver(listener);
    store.setValueForKey(Value(1), "a");
    EXPECT_EQ(listener.heard, Keys({"a"}));
}

TEST(KeyValueStore, ObserversHearARemovalEvenOfWhatIsMissing) {
    KeyValueStore store;
    Listener listener;
    store.addObserver(listener);
    store.setValueForKey(Value(), "a");
    EXPECT_EQ(listener.heard, Keys({"a"}));
}

TEST(KeyValueStore, ObserversSeeTheNewValue) {
    KeyValueStore store;
    Listener listener;
    Value seen;
    listener.meanwhile = [&](KeyValueStore& told) { seen = told.valueForKey("a"); };
    store.addObserver(listener);
    store.setValueForKey(Value("new"), "a");
    EXPECT_EQ(seen, Value("new"));
}

TEST(KeyValueStore, AnObserverThatLeftHearsNothing) {
    KeyValueStore store;
    Listener listener;
    store.addObserver(listener);
    store.removeObserver(listener);
    store.setValueForKey(Value(1), "a");
    EXPECT_EQ(listener.heard, Keys());
}

TEST(KeyValueStore, AnObserverMayLeaveWhileAWriteIsTold) {
    KeyValueStore store;
    Listener first, second, third;
    first.meanwhile = [&](KeyValueStore& told) {
        told.removeObserver(first);
        told.removeObserver(second);
    };
    for (Listener* each : {&first, &second, &third})
        store.addObserver(*each);
    store.setValueForKey(Value(1), "a");
    EXPECT_EQ(first.heard, Keys({"a"}));
    EXPECT_EQ(second.heard, Keys());
    EXPECT_EQ(third.heard, Keys({"a"}));
}

TEST(KeyValueStore, AnObserverThatComesWhileAWriteIsToldHearsTheNextOne) {
    KeyValueStore store;
    Listener first, late;
    first.meanwhile = [&](KeyValueStore& told) {
        if (first.heard.size() == 1)
            told.addObserver(late);
    };
    store.addObserver(first);
    store.setValueForKey(Value(1), "a");
    EXPECT_EQ(late.heard, Keys());
    store.setValueForKey(Value(1), "b");
    EXPECT_EQ(late.heard, Keys({"b"}));
}

TEST(KeyValueStore, AnObserverMayWriteWhileAWriteIsTold) {
    KeyValueStore store;
    Listener normalising;
    normalising.meanwhile = [](KeyValueStore& told) {
        const Value& value = told.valueForKey("a");
        if (value.as<double>() != nullptr)
            told.setValueForKey(Value(value.integerReading()), "a");
    };
    store.addObserver(normalising);
    store.setValueForKey(Value(7.9), "a");
    EXPECT_EQ(store.valueForKey("a"), Value(7));
    EXPECT_EQ(normalising.heard, Keys({"a", "a"}));
}

TEST(KeyValueStore, TheKeyMayBeATextThatTheStoreHolds) {
    KeyValueStore store;
    const std::string name = "a key that is too long to be kept in place";
    store.setValueForKey(Value(name), "key");
    Listener rewriting;
    rewriting.meanwhile = [&](KeyValueStore& told) {
        if (rewriting.heard.size() == 1)
            told.setValueForKey(Value("another text that is too long to be kept in place"), "key");
    };
    Listener second;
    store.addObserver(rewriting);
    store.addObserver(second);
    store.setValueForKey(Value(1), *store.valueForKey("key").as<std::string>());
    EXPECT_EQ(second.heard, Keys({"key", name}));
}

} // namespace
} // namespace toolkit
