#pragma once

#include "toolkit/key_value_store.h"
#include "toolkit/view.h"

#include <string>
#include <vector>

namespace toolkit {

/// Carries values of a store into one control, at once and with every write of its keys. The store and the control
/// are borrowed and outlive the binding.
class Binding : public StoreObserver {
public:
    Binding(KeyValueStore& store, std::vector<std::string> keys);
    Binding(const Binding&) = delete;
    Binding& operator=(const Binding&) = delete;
    virtual ~Binding();

    void storeDidWrite(KeyValueStore& store, std::string_view key) final;

protected:
    [[nodiscard]] KeyValueStore& store() const { return store_; }
    [[nodiscard]] const std::vector<std::string>& keys() const { return keys_; }
    /// Shows what the store holds now.
    virtual void show() = 0;

private:
    KeyValueStore& store_;
    std::vector<std::string> keys_;
};

/// The value of a number field or the state of a check box. What the user changes is written into the store.
class ValueBinding final : public Binding {
public:
    ValueBinding(KeyValueStore& store, BoundControl& control, std::string key);

private:
    void show() override;
    BoundControl& control_;
};

/// Enabled while every key is true.
class EnabledBinding final : public Binding {
public:
    EnabledBinding(KeyValueStore& store, Control& control, std::vector<std::string> keys);

private:
    void show() override;
    Control& control_;
};

/// In the enabled colour while every key is true, or gives that colour through the transformer where one is named.
class TextColorBinding final : public Binding {
public:
    /// The transformer is looked up by its name whenever it is needed: it may be registered, or replaced, later.
    TextColorBinding(KeyValueStore& store, View& view, std::vector<std::string> keys, std::string transformer);

private:
    void show() override;
    View& view_;
    std::string transformer_;
};

} // namespace toolkit
