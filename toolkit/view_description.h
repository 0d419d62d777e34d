#pragma once

#include "toolkit/bundle.h"
#include "toolkit/export.h"
#include "toolkit/key_value_store.h"
#include "toolkit/view.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace toolkit {

/// The models of one view description and of the windows that it names as its companions, with the store that their
/// bindings share. Owns them all.
///
/// A description is a Qt Designer form `<name>.ui` among the bundle's resources. Object names become the models' names,
/// the classes decide their kind (with the property "kind" where a class serves for two), and dynamic properties carry
/// `tag`, `action`, `bindValue`, `bindEnabled` (keys that must all be true), `bindTextColor` (likewise, each through
/// the transformer named by `textColorTransformer` where one is named), `hidden`, `modelFrame`, `columnWidth`,
/// `content` and `selection` (the list that a table or the tabs follow); on the root `store` and `list` (the names of
/// the store and of the list, which no widget stands for), `companions`, and `resizeAction`. Texts are keys of the
/// bundle's default table and are resolved as the description is loaded.
class CV_TOOLKIT_EXPORT LoadedViews {
public:
    /// Null where there is no such description, or it is broken; `error` then says why, in one sentence.
    static std::unique_ptr<LoadedViews> load(const Bundle& bundle, std::string_view name, std::string& error);
    ~LoadedViews();
    LoadedViews(const LoadedViews&) = delete;
    LoadedViews& operator=(const LoadedViews&) = delete;

    [[nodiscard]] View& root() const;                                  ///< the panel's own view
    [[nodiscard]] const std::shared_ptr<KeyValueStore>& store() const; ///< what the controls are bound to
    /// Null where no model bears the name.
    [[nodiscard]] View* viewNamed(std::string_view name) const;
    /// In the order of the descriptions.
    [[nodiscard]] const std::vector<std::unique_ptr<View>>& views() const;
    /// The message that a changed window height sends to the panel; empty where the description names none.
    [[nodiscard]] const std::string& resizeAction() const;

private:
    friend class ViewReader;
    struct Content;
    LoadedViews();

    std::unique_ptr<Content> content_;
    View* root_ = nullptr;
};

/// A form's text as a builder of widgets needs it: without the properties that are for models alone, and without the
/// blanks that indent its lines. Builders take their time for every letter. A text that is no XML is answered as it is.
CV_TOOLKIT_EXPORT std::string formForWidgets(std::string_view form);

} // namespace toolkit
