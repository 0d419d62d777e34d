#include "shown_json.h"

#include "host/window/mnemonics.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLayout>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QSpinBox>
#include <QStackedWidget>
#include <QStandardItemModel>
#include <QToolButton>

#include <cmath>

namespace tests {
namespace {

using host::Json;

// The palette's colour for what is disabled, or its own.
const char* shownColor(const QWidget& widget, QPalette::ColorRole role) {
    const QPalette palette = widget.palette();
    return palette.color(QPalette::Active, role) == palette.color(QPalette::Disabled, role) ? "disabled" : "enabled";
}

Json itemsOf(const QComboBox& box) {
    Json items = Json::array();
    const auto& model = static_cast<const QStandardItemModel&>(*box.model());
    for (int row = 0; row < model.rowCount(); ++row)
        items.push_back({{"title", model.item(row)->text().toStdString()}, {"enabled", model.item(row)->isEnabled()}});
    return items;
}

} // namespace

Json jsonFromWidget(const QWidget& widget) {
    const bool followsOthers = typeid(widget) == typeid(QWidget) || widget.property("disclosedBy").isValid();
    Json json = followsOthers ? Json::object() : Json{{"visible", !widget.isHidden()}};
    if (const auto* box = qobject_cast<const QComboBox*>(&widget)) {
        json["enabled"] = box->isEnabled();
        json["selected"] = box->currentIndex();
        json["items"] = itemsOf(*box);
    } else if (const auto* group = qobject_cast<const QGroupBox*>(&widget)) {
        json["enabled"] = group->isEnabled();
        json["cells"] = Json::array();
        int row = 0;
        for (const QRadioButton* button : radioButtonsOf(*group)) {
            json["cells"].push_back({{"title", host::caption(*button).toStdString()}});
            if (button->isChecked())
                json["selected"] = row;
            ++row;
        }
    } else if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) {
        json["enabled"] = button->isEnabled();
        if (button->isCheckable())
            json["state"] = button->isChecked() ? 1 : 0;
        if (qobject_cast<const QToolButton*>(button) == nullptr) // a disclosure button shows an arrow
            json["title"] = host::caption(*button).toStdString();
    } else if (const auto* spin = qobject_cast<const QSpinBox*>(&widget)) {
        json["enabled"] = spin->isEnabled();
        json["value"] = spin->value();
        json["color"] = shownColor(*spin, QPalette::Text);
    } else if (const auto* slider = qobject_cast<const QSlider*>(&widget)) {
        json["enabled"] = slider->isEnabled();
        json["value"] = slider->value();
    } else if (const auto* pages = qobject_cast<const QStackedWidget*>(&widget)) {
        json["selected"] = pages->currentWidget()->property("pageId").toString().toStdString();
    } else if (const auto* label = qobject_cast<const QLabel*>(&widget); label != nullptr) {
        if (!host::caption(*label).isEmpty()) { // else it holds a picture
            json["text"] = host::caption(*label).toStdString();
            json["color"] = shownColor(*label, QPalette::WindowText);
        }
    }
    return json;
}

QList<QRadioButton*> radioButtonsOf(const QGroupBox& box) {
    QList<QRadioButton*> buttons;
    for (int index = 0; index < box.layout()->count(); ++index)
        if (auto* button = qobject_cast<QRadioButton*>(box.layout()->itemAt(index)->widget()))
            buttons << button;
    return buttons;
}

QStringList differences(const Json& shown, const Json& model, const QString& where) {
    if (shown.is_object()) {
        QStringList all;
        for (const auto& [name, value] : shown.items()) {
            const QString member = where + u'.' + QString::fromStdString(name);
            if (!model.contains(name))
                all << QStringLiteral("The model has no %1.").arg(member);
            else if (!model[name].is_null()) // as where no page is selected: one is shown all the same
                all << differences(value, model[name], member);
        }
        return all;
    }
    if (shown.is_array() && model.is_array() && shown.size() == model.size()) {
        QStringList all;
        for (std::size_t index = 0; index < shown.size(); ++index)
            all << differences(shown[index], model[index], QStringLiteral("%1[%2]").arg(where).arg(index));
        return all;
    }
    const bool isSame = shown.is_number() && model.is_number() // widgets hold whole numbers
                            ? shown.get<double>() == std::round(model.get<double>())
                            : shown == model;
    if (isSame)
        return {};
    return {QStringLiteral("%1 shows %2, not %3.")
                .arg(where, QString::fromStdString(shown.dump()), QString::fromStdString(model.dump()))};
}

} // namespace tests
