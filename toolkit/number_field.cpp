#include "toolkit/number_field.h"

#include <cmath>

namespace toolkit {

NumberField::~NumberField() = default;

void NumberField::setLimits(double minimum, double maximum) {
    minimum_ = minimum;
    maximum_ = maximum;
}

void NumberField::setValueThroughBinding(double value) {
    setValue(value);
    const bool whole = std::trunc(value) == value;
    writeThroughBinding(whole ? Value(Value(value).integerReading()) : Value(value));
}

void NumberField::userSetValue(double value) {
    setValueThroughBinding(value);
    runAction();
}

} // namespace toolkit
