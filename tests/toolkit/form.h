#pragma once

#include <string>

namespace toolkit_tests {

/// A view description with this root widget.
inline std::string form(const std::string& root) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<ui version=\"4.0\">" + root + "</ui>\n";
}

/// A widget with the elements in it: properties, layouts and further widgets.
inline std::string widget(const std::string& className, const std::string& name, const std::string& inside = {}) {
    return "<widget class=\"" + className + "\" name=\"" + name + "\">" + inside + "</widget>";
}

inline std::string property(const std::string& name, const std::string& value) {
    return "<property name=\"" + name + "\" stdset=\"0\">" + value + "</property>";
}

inline std::string text(const std::string& name, const std::string& value) {
    return property(name, "<string notr=\"true\">" + value + "</string>");
}

inline std::string number(const std::string& name, int value) {
    return property(name, "<number>" + std::to_string(value) + "</number>");
}

inline std::string flag(const std::string& name, bool value) {
    return property(name, value ? "<bool>true</bool>" : "<bool>false</bool>");
}

inline std::string rect(const std::string& name, int x, int y, int width, int height) {
    const auto side = [](const char* element, int value) {
        return "<" + std::string(element) + ">" + std::to_string(value) + "</" + element + ">";
    };
    return property(name,
                    "<rect>" + side("x", x) + side("y", y) + side("width", width) + side("height", height) + "</rect>");
}

/// A grid with one cell, in which these widgets stand.
inline std::string grid(const std::string& inside) {
    return "<layout class=\"QGridLayout\" name=\"grid\"><item row=\"0\" column=\"0\">" + inside + "</item></layout>";
}

} // namespace toolkit_tests
