// What greys the controls of both panels.

#include "framework/CVPrintQualityPDE.h"
#include "framework/option_keywords.h"

#include "toolkit/label.h"

void CVPrintQualityPDE::checkUIConstraints() {
    std::vector<toolkit::Control*> controls;
    std::vector<toolkit::Label*> labels; // titled boxes are left out: they keep their colour
    for (const std::string& key : managedKeys()) {
        if (auto* control = dynamic_cast<toolkit::Control*>(determineUI(key)))
            controls.push_back(control);
        if (auto* label = dynamic_cast<toolkit::Label*>(determineLabel(key)))
            labels.push_back(label);
    }
    const bool usable = !hasFlag(kImageModeFaxOutput);
    if (effectContent != nullptr)
        effectContent->setValueForKey(usable, keywords::kOutput);
    for (toolkit::Control* control : controls)
        control->setEnabled(usable);
    for (toolkit::Label* label : labels)
        label->setTextColor(usable ? toolkit::TextColor::Enabled : toolkit::TextColor::Disabled);
}
