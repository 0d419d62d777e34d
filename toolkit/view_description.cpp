#include "toolkit/view_description.h"

#include "toolkit/bindings.h"
#include "toolkit/button.h"
#include "toolkit/image_view.h"
#include "toolkit/item_list.h"
#include "toolkit/label.h"
#include "toolkit/number_field.h"
#include "toolkit/popup_list.h"
#include "toolkit/radio_matrix.h"
#include "toolkit/table_view.h"
#include "toolkit/window.h"

#include <pugixml.hpp>

#include <algorithm>
#include <sstream>

namespace toolkit {

struct LoadedViews::Content {
    std::shared_ptr<KeyValueStore> store = std::make_shared<KeyValueStore>();
    std::vector<std::unique_ptr<View>> views;
    std::vector<std::unique_ptr<Binding>> bindings; // go before the views and the store that they observe
    std::string resizeAction;
};

namespace {

constexpr std::int64_t kMostRows = 100; // of a matrix
constexpr int kDeepestNesting = 64;     // of widgets, layouts and items

std::vector<std::string> words(const std::string& text) {
    constexpr const char* kBlanks = " \t\r\n";
    std::vector<std::string> result;
    for (std::size_t end = 0, start = 0; (start = text.find_first_not_of(kBlanks, end)) != std::string::npos;) {
        end = std::min(text.find_first_of(kBlanks, start), text.size());
        result.push_back(text.substr(start, end - start));
    }
    return result;
}

// A widget of the form with its properties.
class Widget {
public:
    explicit Widget(const pugi::xml_node& node) : node_(node) {}

    [[nodiscard]] std::string className() const { return node_.attribute("class").value(); }
    [[nodiscard]] std::string name() const { return node_.attribute("name").value(); }
    [[nodiscard]] std::string text(const char* property) const { return value(property).child_value("string"); }
    [[nodiscard]] double number(const char* property, double otherwise) const {
        const pugi::xml_node child = value(property);
        const pugi::xml_node number = child.child("number") ? child.child("number") : child.child("double");
        return number ? number.text().as_double() : otherwise;
    }
    /// Cut toward zero; the nearest limit for what no integer can hold.
    [[nodiscard]] std::int64_t integer(const char* property, double otherwise) const {
        return Value(number(property, otherwise)).integerReading();
    }
    [[nodiscard]] bool flag(const char* property) const { return value(property).child("bool").text().as_bool(); }
    [[nodiscard]] Rect rect(const char* property) const {
        const pugi::xml_node rect = value(property).child("rect");
        const auto side = [&](const char* name) { return rect.child(name).text().as_double(); };
        return {.x = side("x"), .y = side("y"), .width = side("width"), .height = side("height")};
    }
    [[nodiscard]] bool has(const char* property) const { return !value(property).empty(); }
    [[nodiscard]] const pugi::xml_node& node() const { return node_; }

private:
    [[nodiscard]] pugi::xml_node value(const char* property) const {
        return node_.find_child_by_attribute("property", "name", property);
    }
    pugi::xml_node node_;
};

template <typename Model>
std::unique_ptr<View> make(const Widget& widget) {
    return std::make_unique<Model>(widget.name());
}

struct KindOfWidget {
    std::string_view className;
    std::string_view kind; // the property that tells two kinds of one class apart
    std::unique_ptr<View> (*make)(const Widget&);
};

// Which model stands for which class of widget.
constexpr KindOfWidget kKinds[] = {
    // class           kind      model
    {"QComboBox", "", make<PopUpList>},
    {"QGroupBox", "matrix",
     [](const Widget& widget) -> std::unique_ptr<View> {
         return std::make_unique<RadioMatrix>(
             widget.name(), static_cast<int>(std::clamp<std::int64_t>(widget.integer("rows", 1), 1, kMostRows)));
     }},
    {"QGroupBox", "", make<TitledBox>},
    {"QCheckBox", "", make<CheckBox>},
    {"QToolButton", "", make<CheckBox>},
    {"QPushButton", "", make<PushButton>},
    {"QLabel", "image", make<ImageView>},
    {"QLabel", "", make<Label>},
    {"QSpinBox", "", make<NumberField>},
    {"QDoubleSpinBox", "", make<NumberField>},
    {"QSlider", "", make<NumberField>},
    {"QStackedWidget", "", make<TabView>},
    {"QTabWidget", "", make<TabView>},
    {"QListView", "", make<TableView>},
    {"QListWidget", "", make<TableView>},
    {"QDialog", "", make<Window>},
    {"QWidget", "", make<View>},
    {"QFrame", "", make<View>},
    {"Line", "", make<View>},
};

// The properties that no widget has.
constexpr std::string_view kModelProperties[] = {
    "action",  "bindEnabled", "bindTextColor", "bindValue", "columnWidth",         "companions",
    "content", "hidden",      "kind",          "list",      "modelFrame",          "resizeAction",
    "rows",    "selection",   "store",         "tag",       "textColorTransformer"};

class ModelPropertiesOfForm : public pugi::xml_tree_walker {
public:
    bool for_each(pugi::xml_node& node) override {
        const std::string_view name = node.attribute("name").value();
        if (std::string_view(node.name()) == "property" && node.attribute("stdset") &&
            !node.attribute("stdset").as_bool() &&
            std::ranges::find(kModelProperties, name) != std::end(kModelProperties))
            found.push_back(node);
        return true;
    }
    std::vector<pugi::xml_node> found;
};

} // namespace

// Reads one form into models.
class ViewReader {
public:
    ViewReader(const Bundle& bundle, LoadedViews::Content& content) : bundle_(bundle), content_(content) {}

    // Answers the root model, or null and says why.
    View* read(std::string_view name, std::string& error) {
        const auto* path = bundle_.pathForResource(name, "ui");
        pugi::xml_document document;
        if (!path) {
            error = "The bundle has no view description \"" + std::string(name) + "\".";
            return nullptr;
        }
        const pugi::xml_parse_result parsed = document.load_file(path->c_str());
        const Widget root(document.child("ui").child("widget"));
        if (!parsed || root.node().empty()) {
            error = "The view description \"" + path->string() +
                    "\" is broken: " + (parsed ? "It has no widget" : parsed.description()) + ".";
            return nullptr;
        }
        const std::string list = root.text("list");
        list_ = nullptr;
        if (!list.empty())
            list_ = static_cast<ItemList*>(add(std::make_unique<ItemList>(list)));
        View* model = readWidget(root, error);
        if (model == nullptr)
            return nullptr;
        if (root.has("resizeAction"))
            content_.resizeAction = root.text("resizeAction");
        for (const std::string& companion : words(root.text("companions"))) {
            ViewReader reader(bundle_, content_);
            if (reader.read(companion, error) == nullptr)
                return nullptr;
        }
        return model;
    }

private:
    View* add(std::unique_ptr<View> view) { return content_.views.emplace_back(std::move(view)).get(); }

    View* readWidget(const Widget& widget, std::string& error) {
        const std::string kind = widget.text("kind");
        const auto row = std::ranges::find_if(kKinds, [&](const KindOfWidget& each) {
            return each.className == widget.className() && each.kind == kind;
        });
        if (row == std::end(kKinds)) {
            error = "The view description names \"" + widget.name() + "\" of the unknown class \"" +
                    widget.className() + "\".";
            return nullptr;
        }
        if (std::ranges::any_of(content_.views, [&](const auto& each) { return each->name() == widget.name(); })) {
            error = "The view description names \"" + widget.name() + "\" twice.";
            return nullptr;
        }
        View* view = add(row->make(widget));
        Window* const enclosing = window_;
        if (auto* own = dynamic_cast<Window*>(view))
            window_ = own;
        else if (window_ != nullptr)
            window_->addContent(*view);
        setUp(*view, widget);
        const bool children = readChildren(widget.node(), error);
        window_ = enclosing;
        return children ? view : nullptr;
    }

    bool readChildren(const pugi::xml_node& node, std::string& error) {
        if (++depth_ > kDeepestNesting) {
            error = "The view description is nested too deeply.";
            return false;
        }
        const bool read = std::ranges::all_of(node.children(), [&](const pugi::xml_node& child) {
            const std::string_view element = child.name();
            if (element == "widget")
                return readWidget(Widget(child), error) != nullptr;
            return (element != "layout" && element != "item") || readChildren(child, error);
        });
        --depth_;
        return read;
    }

    void setUp(View& view, const Widget& widget) {
        view.setFrame(widget.rect("modelFrame"));
        if (widget.flag("hidden"))
            view.setHidden(true);
        if (auto* control = dynamic_cast<Control*>(&view)) {
            control->setTag(widget.integer("tag", 0));
            control->setActionMessage(widget.text("action"));
        }
        if (auto* button = dynamic_cast<Button*>(&view); button != nullptr && !widget.text("text").empty())
            button->setTitle(bundle_.localizedText(widget.text("text")));
        if (auto* push = dynamic_cast<PushButton*>(&view))
            push->setDefault(widget.flag("default"));
        if (auto* label = dynamic_cast<Label*>(&view); label != nullptr && !widget.text("text").empty())
            label->setText(bundle_.localizedString(widget.text("text")));
        if (auto* box = dynamic_cast<TitledBox*>(&view); box != nullptr && !widget.text("title").empty())
            box->setTitle(bundle_.localizedString(widget.text("title")));
        if (auto* field = dynamic_cast<NumberField*>(&view))
            field->setLimits(widget.number("minimum", 0), widget.number("maximum", 99));
        if (auto* table = dynamic_cast<TableView*>(&view)) {
            table->setColumnWidth(widget.number("columnWidth", 0));
            if (list_ != nullptr && widget.text("content") == list_->name())
                table->setContent(list_);
        }
        if (auto* tabs = dynamic_cast<TabView*>(&view))
            if (list_ != nullptr && widget.text("selection") == list_->name())
                tabs->setSelection(list_);
        bind(view, widget);
    }

    void bind(View& view, const Widget& widget) {
        KeyValueStore& store = *content_.store;
        const auto keep = [&](std::unique_ptr<Binding> binding) { content_.bindings.push_back(std::move(binding)); };
        auto* control = dynamic_cast<Control*>(&view);
        if (auto* bound = dynamic_cast<BoundControl*>(&view); bound != nullptr && widget.has("bindValue"))
            keep(std::make_unique<ValueBinding>(store, *bound, widget.text("bindValue")));
        if (control != nullptr && widget.has("bindEnabled"))
            keep(std::make_unique<EnabledBinding>(store, *control, words(widget.text("bindEnabled"))));
        if (widget.has("bindTextColor"))
            keep(std::make_unique<TextColorBinding>(store, view, words(widget.text("bindTextColor")),
                                                    widget.text("textColorTransformer")));
    }

    const Bundle& bundle_;
    LoadedViews::Content& content_;
    ItemList* list_ = nullptr;
    Window* window_ = nullptr;
    int depth_ = 0;
};

LoadedViews::LoadedViews() : content_(std::make_unique<Content>()) {}
LoadedViews::~LoadedViews() = default;

std::unique_ptr<LoadedViews> LoadedViews::load(const Bundle& bundle, std::string_view name, std::string& error) {
    std::unique_ptr<LoadedViews> loaded(new LoadedViews);
    ViewReader reader(bundle, *loaded->content_);
    View* const root = reader.read(name, error);
    if (root == nullptr)
        return nullptr;
    loaded->root_ = root;
    return loaded;
}

View& LoadedViews::root() const {
    return *root_;
}

const std::shared_ptr<KeyValueStore>& LoadedViews::store() const {
    return content_->store;
}

View* LoadedViews::viewNamed(std::string_view name) const {
    const auto view = std::ranges::find_if(content_->views, [&](const auto& each) { return each->name() == name; });
    return view == content_->views.end() ? nullptr : view->get();
}

const std::vector<std::unique_ptr<View>>& LoadedViews::views() const {
    return content_->views;
}

const std::string& LoadedViews::resizeAction() const {
    return content_->resizeAction;
}

std::string formForWidgets(std::string_view form) {
    pugi::xml_document document;
    if (!document.load_buffer(form.data(), form.size(), pugi::parse_default | pugi::parse_ws_pcdata_single))
        return std::string(form);
    ModelPropertiesOfForm properties;
    document.traverse(properties);
    for (pugi::xml_node& property : properties.found)
        property.parent().remove_child(property);
    std::ostringstream text;
    document.save(text, "", pugi::format_raw, pugi::encoding_utf8);
    return std::move(text).str();
}

} // namespace toolkit
