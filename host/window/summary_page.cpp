#include "host/window/summary_page.h"

#include "framework/option_keywords.h"
#include "host/window/mnemonics.h"

#include <QApplication>
#include <QClipboard>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace host {
namespace {

// Of two options of the same text the one that the panel manages is meant.
const printing::Option* optionOfTitle(const printing::PrinterDescription& description, CVPrintQualityPDE& panel,
                                      const std::string& title) {
    for (const std::string& key : panel.supportedPPDOptionKeys().value_or(std::vector<std::string>()))
        if (const printing::Option* option = description.option(key); option != nullptr && option->text == title)
            return option;
    return nullptr;
}

bool isChanged(const printing::PrinterDescription& description, const printing::Option& option,
               const toolkit::Value& value) {
    if (value.as<std::string>() == nullptr) // a number, which the PPD's marks do not follow
        return value.integerReading() != toolkit::integerInText(option.defaultChoice);
    return description.markedChoice(option.keyword) != option.defaultChoice;
}

} // namespace

std::vector<SummaryLine> summaryLines(Session& session) {
    std::vector<SummaryLine> lines;
    for (const auto& panel : framework::PanelList(session.panels())) {
        const auto summary = panel->summaryInfo();
        if (!summary)
            continue;
        const auto* order = toolkit::valueInMap(*summary, keywords::kSummaryDisplayOrder).as<toolkit::ValueList>();
        for (const toolkit::Value& title : order == nullptr ? toolkit::ValueList() : *order) {
            const toolkit::Value& entry = toolkit::valueInMap(*summary, title.textReading());
            if (entry.isAbsent())
                continue;
            const printing::Option* option = optionOfTitle(session.description(), *panel, title.textReading());
            lines.push_back({.title = QString::fromUtf8(title.textReading()),
                             .choice = QString::fromUtf8(entry.textReading()),
                             .isChanged = option != nullptr && isChanged(session.description(), *option, entry)});
        }
    }
    return lines;
}

QString summaryText(const std::vector<SummaryLine>& lines, const Language& language) {
    QString text;
    for (const SummaryLine& line : lines)
        text += line.title + QStringLiteral(": ") + line.choice +
                (line.isChanged ? u' ' + windowText(Text::ChangedMark, language) : QString()) + u'\n';
    return text;
}

SummaryPage::SummaryPage(const Language& language, std::function<void(const QString&)> tell)
    : language_(language), table_(new QTreeWidget(this)), nothing_(new QLabel(this)),
      copyButton_(new QPushButton(this)) {
    table_->setObjectName("summaryTable");
    table_->setAccessibleName(windowText(Text::Summary, language));
    table_->setHeaderLabels(
        {windowText(Text::Option, language), windowText(Text::Choice, language), windowText(Text::Changed, language)});
    table_->setRootIsDecorated(false);
    table_->setUniformRowHeights(true);
    table_->setAlternatingRowColors(true);
    table_->setTabKeyNavigation(false);
    table_->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    nothing_->setText(windowText(Text::NothingToShow, language));
    nothing_->setTextFormat(Qt::PlainText);
    copyButton_->setObjectName("copyButton");
    copyButton_->setAutoDefault(false);
    setCaption(*copyButton_, windowText(Text::CopySummary, language));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(nothing_);
    layout->addWidget(table_);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(copyButton_);
    layout->addLayout(buttons);
    connect(copyButton_, &QPushButton::clicked, this, [this, tell = std::move(tell)] {
        QApplication::clipboard()->setText(summaryText(lines_, language_));
        tell(windowText(Text::SummaryCopied, language_));
    });
    showLines({});
}

void SummaryPage::setTakenLetters(const QString& letters) {
    assignMnemonics(*this, letters);
}

void SummaryPage::showLines(std::vector<SummaryLine> lines) {
    lines_ = std::move(lines);
    table_->clear();
    for (const SummaryLine& line : lines_) {
        auto* item = new QTreeWidgetItem(
            table_, {line.title, line.choice, line.isChanged ? windowText(Text::ChangedMark, language_) : QString()});
        if (!line.isChanged)
            continue;
        QFont font = table_->font();
        font.setBold(true);
        for (int column = 0; column < table_->columnCount(); ++column)
            item->setFont(column, font);
    }
    if (!lines_.empty())
        fitTable();
    table_->setVisible(!lines_.empty());
    nothing_->setVisible(lines_.empty());
    copyButton_->setEnabled(!lines_.empty());
    copyButton_->setAccessibleDescription(lines_.empty() ? nothing_->text() : QString());
}

void SummaryPage::fitTable() {
    table_->setCurrentItem(table_->topLevelItem(0));
    constexpr int kShownRows = 10; // more scroll
    table_->setMinimumHeight(table_->header()->sizeHint().height() + 2 * table_->frameWidth() +
                             table_->sizeHintForRow(0) * std::min(static_cast<int>(lines_.size()), kShownRows));
    constexpr int kMargin = 24; // pixels, with room for a scroll bar
    table_->setMinimumWidth(table_->header()->length() + kMargin);
}

} // namespace host
