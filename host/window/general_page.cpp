#include "host/window/general_page.h"

#include "framework/option_keywords.h"
#include "host/window/form_binder.h"
#include "host/window/free_size_editor.h"
#include "host/window/mnemonics.h"
#include "host/window/pop_up_box.h"
#include "host/window/session_starter.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>

namespace host {
namespace {

constexpr int kMostCopies = 9999;
constexpr std::string_view kColorMatchingAttribute = "APSupportsCustomColorMatching";
constexpr const char* kFreeSize = "";     // the free size among the papers' keywords
constexpr const char* kCustom = "Custom"; // the PPD's own entry for it

PopUpBox* makeList(const char* name) {
    auto* list = new PopUpBox;
    list->setObjectName(name);
    list->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    return list;
}

std::string dataOf(const QComboBox& list, int index) {
    return list.itemData(index).toString().toStdString();
}

void selectData(QComboBox& list, const std::string& data) {
    const QSignalBlocker quiet(list);
    list.setCurrentIndex(list.findData(QString::fromUtf8(data)));
}

} // namespace

GeneralPage::GeneralPage(const Language& language, Choices choices)
    : language_(language), choices_(std::move(choices)), layout_(new QFormLayout(this)), printerRow_(new QHBoxLayout),
      printerList_(makeList("printerList")), lookingLabel_(new QLabel), folderRow_(new QWidget),
      folderField_(new QLineEdit), paperList_(makeList("paperList")), freeSize_(new FreeSizeEditor(language)),
      copiesField_(new QSpinBox), pagesField_(new QLineEdit), twoSidedList_(makeList("twoSidedList")),
      outputList_(makeList("outputList")), colorMatchingList_(makeList("colorMatchingList")),
      scalingList_(makeList("scalingList")), rememberBox_(new QCheckBox) {
    layout_->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
    layout_->setLabelAlignment(Qt::AlignRight | Qt::AlignVCenter);
    lookingLabel_->setText(windowText(Text::LookingForPrinters, language));
    lookingLabel_->setObjectName("lookingLabel");
    freeSize_->setObjectName("freeSize");
    copiesField_->setObjectName("copiesField");
    copiesField_->setRange(1, kMostCopies);
    pagesField_->setObjectName("pagesField");
    pagesField_->setPlaceholderText(windowText(Text::AllPages, language));
    pagesField_->setAccessibleDescription(windowText(Text::AllPages, language));
    folderField_->setObjectName("folderField");

    auto* browse = new QPushButton;
    browse->setObjectName("browseButton");
    browse->setAutoDefault(false);
    setCaption(*browse, windowText(Text::ChooseFolder, language));
    auto* folderLayout = new QHBoxLayout(folderRow_);
    folderLayout->setContentsMargins(0, 0, 0, 0);
    folderLayout->addWidget(folderField_);
    folderLayout->addWidget(browse);
    folderRow_->setFocusProxy(folderField_);

    // No widget of its own: a list and the label that names it have one parent.
    printerRow_->addWidget(printerList_, 1);
    addRow(Text::Printer, *printerList_, printerRow_);
    layout_->addRow(QString(), lookingLabel_);
    addRow(Text::Folder, *folderRow_)->setBuddy(folderField_);
    addRow(Text::Paper, *paperList_);
    layout_->addRow(QString(), freeSize_);
    addRow(Text::ScaledTo, *scalingList_);
    addRow(Text::Copies, *copiesField_);
    addRow(Text::Pages, *pagesField_);
    addRow(Text::TwoSided, *twoSidedList_);
    addRow(Text::Output, *outputList_);
    addRow(Text::ColorMatching, *colorMatchingList_);
    rememberBox_->setObjectName("rememberBox");
    setCaption(*rememberBox_, windowText(Text::RememberChoices, language));
    layout_->addRow(QString(), rememberBox_);
    folderField_->setAccessibleName(windowText(Text::Folder, language));
    colorMatchingList_->addItem(windowText(Text::DriverMatches, language),
                                QString::fromUtf8(printing::kVendorColorMatching));
    colorMatchingList_->addItem(windowText(Text::ApplicationMatches, language),
                                QString::fromUtf8(printing::kApplicationColorMatching));
    tameInput(*this);

    connect(browse, &QPushButton::clicked, this, [this] {
        const QString chosen = QFileDialog::getExistingDirectory(this, {}, folder());
        if (!chosen.isEmpty())
            setFolder(chosen);
    });
    connect(printerList_, &QComboBox::activated, this, [this](int index) { choices_.printer(index); });
    connect(paperList_, &QComboBox::activated, this, [this] { userChosePaper(); });
    freeSize_->sizeChanged = [this] { userChosePaper(); };
    connect(twoSidedList_, &QComboBox::activated, this,
            [this](int index) { choices_.mark(std::string(keywords::kDuplex), dataOf(*twoSidedList_, index)); });
    connect(outputList_, &QComboBox::activated, this,
            [this](int index) { choices_.mark(std::string(keywords::kOutput), dataOf(*outputList_, index)); });
    connect(colorMatchingList_, &QComboBox::activated, this,
            [this](int index) { choices_.colorMatching(dataOf(*colorMatchingList_, index)); });
    connect(scalingList_, &QComboBox::activated, this,
            [this](int index) { choices_.scaling(dataOf(*scalingList_, index)); });
    connect(pagesField_, &QLineEdit::textEdited, this, [this] { choices_.pagesEdited(); });
    connect(rememberBox_, &QCheckBox::clicked, this, [this](bool on) { choices_.remember(on); });
    setLooking(false);
    setFolderShown(false);
    fitFields();
    show(nullptr);
}

QLabel* GeneralPage::addRow(Text text, QWidget& field, QLayout* row) {
    auto* label = new QLabel;
    label->setBuddy(&field);
    setCaption(*label, windowText(Text::Caption, language_).arg(windowText(text, language_)));
    field.setAccessibleName(windowText(text, language_));
    if (row != nullptr)
        layout_->addRow(label, row);
    else
        layout_->addRow(label, &field);
    return label;
}

void GeneralPage::addPrinters(const QStringList& names) {
    const QSignalBlocker quiet(printerList_);
    printerList_->addItems(names);
    choices_.sizeChanged();
}

void GeneralPage::addBesidePrinters(QWidget& control) {
    printerRow_->addWidget(&control);
    setTabOrder(printerList_, &control);
    assignMnemonics(*this, takenLetters_);
}

void GeneralPage::selectPrinter(int index) {
    const QSignalBlocker quiet(printerList_);
    printerList_->setCurrentIndex(index);
}

void GeneralPage::setLooking(bool looking) {
    showRow(*lookingLabel_, looking);
}

void GeneralPage::setFolderShown(bool shown) {
    showRow(*folderRow_, shown);
}

void GeneralPage::showRow(QWidget& field, bool shown) {
    layout_->setRowVisible(&field, shown);
    assignMnemonics(*this, takenLetters_);
    choices_.sizeChanged();
}

void GeneralPage::setFolder(const QString& folder) {
    folderField_->setText(folder);
}

QString GeneralPage::folder() const {
    return folderField_->text();
}

void GeneralPage::setCopies(int copies) {
    copiesField_->setValue(copies);
}

int GeneralPage::copies() const {
    return copiesField_->value();
}

void GeneralPage::setPages(const QString& pages) {
    pagesField_->setText(pages);
}

QString GeneralPage::pages() const {
    return pagesField_->text();
}

void GeneralPage::setTakenLetters(const QString& letters) {
    takenLetters_ = letters;
    assignMnemonics(*this, takenLetters_);
}

void GeneralPage::focusFirst() {
    printerList_->setFocus();
}

void GeneralPage::focusPages() {
    pagesField_->setFocus();
    pagesField_->selectAll();
}

void GeneralPage::setRemembers(bool remembers) {
    rememberBox_->setChecked(remembers);
}

bool GeneralPage::remembers() const {
    return rememberBox_->isChecked();
}

void GeneralPage::fillPapers(const printing::PrinterDescription& description) {
    paperList_->clear();
    scalingList_->clear();
    scalingList_->addItem(windowText(Text::NotScaled, language_), QString());
    if (const printing::Option* sizes = description.option(keywords::kPageSize))
        for (const printing::Choice& size : sizes->choices)
            if (size.keyword != kCustom)
                for (PopUpBox* list : {paperList_, scalingList_})
                    list->addItem(QString::fromUtf8(size.text), QString::fromUtf8(size.keyword));
    if (description.allowsCustomSizes()) {
        paperList_->addItem(windowText(Text::FreeSize, language_), QString::fromUtf8(kFreeSize));
        freeSize_->setLimits(description.customSizeLimits());
    }
}

void GeneralPage::fillChoices(QComboBox& list, const printing::PrinterDescription& description,
                              std::string_view option) {
    list.clear();
    const printing::Option* own = description.option(option);
    if (own != nullptr)
        for (const printing::Choice& choice : own->choices)
            list.addItem(QString::fromUtf8(choice.text), QString::fromUtf8(choice.keyword));
    layout_->setRowVisible(&list, own != nullptr);
}

void GeneralPage::show(Session* session) {
    const bool isNew = std::exchange(session_, session) != session;
    if (session == nullptr) {
        for (QWidget* row : std::initializer_list<QWidget*>{freeSize_, twoSidedList_, outputList_, colorMatchingList_,
                                                            scalingList_, rememberBox_})
            layout_->setRowVisible(row, false);
        paperList_->clear();
        paperList_->setEnabled(false);
        paperList_->setAccessibleDescription(windowText(Text::NoPrinter, language_));
        return;
    }
    const printing::PrinterDescription& description = session->description();
    if (isNew) {
        fillPapers(description);
        paperList_->setEnabled(paperList_->count() > 0);
        paperList_->setAccessibleDescription({});
        fillChoices(*twoSidedList_, description, keywords::kDuplex);
        fillChoices(*outputList_, description, keywords::kOutput);
        layout_->setRowVisible(scalingList_, scalingList_->count() > 1);
        layout_->setRowVisible(rememberBox_, true);
        layout_->setRowVisible(colorMatchingList_, description.hasAttribute(kColorMatchingAttribute));
        assignMnemonics(*this, takenLetters_);
    }
    showPaper(*session);
    selectData(*twoSidedList_, description.markedChoice(keywords::kDuplex).value_or(""));
    selectData(*outputList_, description.markedChoice(keywords::kOutput).value_or(""));
    const auto scaledTo = session->settings() ? session->settings()->valueForKey(printing::kPageToPaperMappingKey)
                                              : std::optional<printing::SettingValue>();
    selectData(*scalingList_, scaledTo ? printing::optionText(*scaledTo) : std::string());
    const auto mode = session->settings() ? session->settings()->valueForKey(printing::kColorMatchingModeKey)
                                          : std::optional<printing::SettingValue>();
    selectData(*colorMatchingList_, mode == printing::SettingValue(std::string(printing::kApplicationColorMatching))
                                        ? std::string(printing::kApplicationColorMatching)
                                        : std::string(printing::kVendorColorMatching));
    choices_.sizeChanged();
}

void GeneralPage::fitFields() {
    constexpr int kMargin = 24;           // pixels around the text of a field
    constexpr int kFolderCharacters = 30; // that are seen at once
    folderField_->setMinimumWidth(folderField_->fontMetrics().averageCharWidth() * kFolderCharacters + kMargin);
    pagesField_->setMinimumWidth(pagesField_->fontMetrics().horizontalAdvance(pagesField_->placeholderText()) +
                                 kMargin);
}

void GeneralPage::showPaper(Session& session) {
    const printing::PageFormat* format = session.pageFormat();
    const std::optional<printing::Paper> paper = format == nullptr ? std::nullopt : format->paper;
    const bool isFree = paper && !paper->ppdName && paper->width && paper->height;
    if (paper && paper->width && paper->height)
        freeSize_->setSize(*paper->width, *paper->height);
    selectData(*paperList_, isFree ? kFreeSize : paper && paper->ppdName ? *paper->ppdName : "?");
    layout_->setRowVisible(freeSize_, isFree);
}

void GeneralPage::userChosePaper() {
    if (session_ == nullptr || paperList_->currentIndex() < 0)
        return;
    const std::string keyword = dataOf(*paperList_, paperList_->currentIndex());
    if (keyword != kFreeSize) {
        if (const auto paper = session_->paperForPageSize(keyword))
            choices_.paper(*paper, {std::string(keywords::kPageSize), keyword});
        return;
    }
    choices_.paper(freePaper(freeSize_->widthInPoints(), freeSize_->heightInPoints()),
                   {std::string(keywords::kPageSize), kCustom});
}

} // namespace host
