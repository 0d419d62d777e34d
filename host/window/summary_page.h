#pragma once

#include "host/session/session.h"
#include "host/window/window_texts.h"

#include <QString>
#include <QWidget>

#include <functional>
#include <vector>

class QPushButton;
class QLabel;
class QTreeWidget;

namespace host {

/// One line of the summary.
struct SummaryLine {
    QString title;
    QString choice;
    bool isChanged = false; ///< differs from the PPD's default
    friend bool operator==(const SummaryLine&, const SummaryLine&) = default;
};

/// The lines that the session's panels give, in their order. A title without an entry is left out.
std::vector<SummaryLine> summaryLines(Session& session);

/// The lines as plain text, one below the other.
QString summaryText(const std::vector<SummaryLine>& lines, const Language& language);

/// Lists what will be printed with.
class SummaryPage : public QWidget {
public:
    SummaryPage(const Language& language, std::function<void(const QString&)> tell);

    /// The letters that the dialog around it has for its own mnemonics.
    void setTakenLetters(const QString& letters);
    void showLines(std::vector<SummaryLine> lines);
    /// The same lines, as fonts and styles want them now.
    void showAgain() { showLines(std::move(lines_)); }

private:
    void fitTable();

    Language language_;
    std::vector<SummaryLine> lines_;
    QTreeWidget* table_;
    QLabel* nothing_;
    QPushButton* copyButton_;
};

} // namespace host
