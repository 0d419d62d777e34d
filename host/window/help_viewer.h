#pragma once

#include "host/window/window_texts.h"

#include <QDialog>

#include <filesystem>

class QTextBrowser;

namespace host {

/// Shows pages of the help books. Follows links within the books only.
class HelpViewer : public QDialog {
public:
    HelpViewer(QWidget& window, const Language& language);

    void showPage(const std::filesystem::path& page);

private:
    QTextBrowser* browser_;
};

} // namespace host
