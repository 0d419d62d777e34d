#pragma once

#include "host/script/model_json.h"

#include <QList>
#include <QStringList>
#include <QWidget>

class QGroupBox;
class QRadioButton;

namespace tests {

/// What a widget shows of its model, with the members that jsonFromView() gives the model. Members that no widget
/// shows, such as tags and keywords, are left out.
host::Json jsonFromWidget(const QWidget& widget);

/// The radio buttons of a matrix, in its order.
QList<QRadioButton*> radioButtonsOf(const QGroupBox& box);

/// Where what is shown differs from the model, a sentence each. `shown` may have fewer members.
QStringList differences(const host::Json& shown, const host::Json& model, const QString& where);

} // namespace tests
