#include "host/window/free_size_editor.h"

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QGridLayout>
#include <QLabel>
#include <QSignalBlocker>

#include <algorithm>
#include <cmath>

namespace host {
namespace {

struct Unit {
    Text name;
    double points; // in one unit
    int decimals;
};

constexpr Unit kUnits[] = {
    {Text::Millimetres, 72 / 25.4, 1},
    {Text::Inches, 72, 2},
    {Text::Points, 1, 0},
};

// The nearest number of these decimals within what the limit allows.
double roundedInward(double limit, int decimals, bool isMinimum) {
    constexpr double kTolerance = 1e-6; // a limit that is a whole number stays one
    const double scale = std::pow(10, decimals);
    return (isMinimum ? std::ceil(limit * scale - kTolerance) : std::floor(limit * scale + kTolerance)) / scale;
}

} // namespace

FreeSizeEditor::FreeSizeEditor(const Language& language)
    : language_(language), widthField_(new QDoubleSpinBox(this)), heightField_(new QDoubleSpinBox(this)),
      unitList_(new QComboBox(this)), limitsLabel_(new QLabel(this)) {
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* times = new QLabel(QStringLiteral("×"), this);
    layout->addWidget(widthField_, 0, 0);
    layout->addWidget(times, 0, 1);
    layout->addWidget(heightField_, 0, 2);
    auto* unitLabel = new QLabel(windowText(Text::Unit, language), this);
    unitLabel->setBuddy(unitList_); // a list is named by its label alone
    layout->addWidget(unitLabel, 0, 3);
    layout->addWidget(unitList_, 0, 4);
    layout->addWidget(limitsLabel_, 1, 0, 1, 6);
    layout->setColumnStretch(5, 1);
    widthField_->setObjectName("freeWidthField");
    heightField_->setObjectName("freeHeightField");
    unitList_->setObjectName("freeUnitList");
    widthField_->setAccessibleName(windowText(Text::Width, language));
    heightField_->setAccessibleName(windowText(Text::Height, language));
    limitsLabel_->setTextFormat(Qt::PlainText);
    for (const Unit& unit : kUnits)
        unitList_->addItem(windowText(unit.name, language));
    setFocusProxy(widthField_);
    const auto changed = [this](double& side) {
        return [this, &side](double value) {
            side = value * kUnits[unitList_->currentIndex()].points;
            if (sizeChanged)
                sizeChanged();
        };
    };
    for (auto* field : {widthField_, heightField_})
        field->setKeyboardTracking(false);
    connect(widthField_, &QDoubleSpinBox::valueChanged, this, changed(width_));
    connect(heightField_, &QDoubleSpinBox::valueChanged, this, changed(height_));
    connect(unitList_, &QComboBox::activated, this, [this] { showUnit(); });
}

void FreeSizeEditor::setLimits(const printing::CustomSizeLimits& limits) {
    limits_ = limits;
    showUnit();
}

void FreeSizeEditor::setSize(double width, double height) {
    const auto within = [](double side, float least, float most) {
        return std::clamp(side, static_cast<double>(least), static_cast<double>(std::max(least, most)));
    };
    width_ = within(width, limits_.minWidth, limits_.maxWidth);
    height_ = within(height, limits_.minHeight, limits_.maxHeight);
    showSides();
}

void FreeSizeEditor::showUnit() {
    const Unit& unit = kUnits[unitList_->currentIndex()];
    const QString suffix = windowText(unit.name, language_);
    const auto limit = [&](QDoubleSpinBox& field, float least, float most) {
        const QSignalBlocker quiet(field);
        field.setDecimals(unit.decimals);
        field.setSingleStep(unit.decimals == 2 ? 0.1 : 1);
        field.setRange(roundedInward(static_cast<double>(least) / unit.points, unit.decimals, true),
                       roundedInward(static_cast<double>(most) / unit.points, unit.decimals, false));
    };
    limit(*widthField_, limits_.minWidth, limits_.maxWidth);
    limit(*heightField_, limits_.minHeight, limits_.maxHeight);
    limitsLabel_->setText(windowText(Text::SizeLimits, language_)
                              .arg(widthField_->textFromValue(widthField_->minimum()),
                                   widthField_->textFromValue(widthField_->maximum()) + u' ' + suffix,
                                   heightField_->textFromValue(heightField_->minimum()),
                                   heightField_->textFromValue(heightField_->maximum()) + u' ' + suffix));
    widthField_->setAccessibleDescription(limitsLabel_->text());
    heightField_->setAccessibleDescription(limitsLabel_->text());
    showSides();
}

void FreeSizeEditor::showSides() {
    const Unit& unit = kUnits[unitList_->currentIndex()];
    const QSignalBlocker quietWidth(widthField_), quietHeight(heightField_);
    widthField_->setValue(width_ / unit.points);
    heightField_->setValue(height_ / unit.points);
}

} // namespace host
