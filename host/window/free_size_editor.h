#pragma once

#include "host/window/window_texts.h"
#include "printing/printer_description.h"

#include <QWidget>

#include <functional>

class QComboBox;
class QDoubleSpinBox;
class QLabel;

namespace host {

/// Edits the two sides of a free paper size, in the user's unit and within a printer's limits.
class FreeSizeEditor : public QWidget {
public:
    explicit FreeSizeEditor(const Language& language);

    void setLimits(const printing::CustomSizeLimits& limits);
    /// In points; brought within the limits. Nobody is told.
    void setSize(double width, double height);
    [[nodiscard]] double widthInPoints() const { return width_; }
    [[nodiscard]] double heightInPoints() const { return height_; }

    /// Is called when the user changed a side.
    std::function<void()> sizeChanged;

private:
    void showUnit();
    void showSides();

    Language language_;
    printing::CustomSizeLimits limits_;
    double width_ = 0, height_ = 0; // points
    QDoubleSpinBox* widthField_;
    QDoubleSpinBox* heightField_;
    QComboBox* unitList_;
    QLabel* limitsLabel_;
};

} // namespace host
