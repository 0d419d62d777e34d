#pragma once

#include "host/session/session.h"
#include "host/window/user_actions.h"
#include "host/window/window_texts.h"

#include <QWidget>

#include <functional>
#include <optional>
#include <string>

class QCheckBox;
class QComboBox;
class QFormLayout;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QSpinBox;

namespace host {

class FreeSizeEditor;
class PopUpBox;

/// The host's own page: printer, paper, scaling, copies, pages, two-sided printing, output, colour matching, and
/// whether all of it is remembered. It shows what the session holds and tells what the user chose; it changes nothing
/// itself.
class GeneralPage : public QWidget {
public:
    /// What the user did. All are set by the owner.
    struct Choices {
        std::function<void(int index)> printer;
        std::function<void(const printing::Paper& paper, const printing::MarkedChoice& cause)> paper;
        std::function<void(const std::string& option, const std::string& choice)> mark; ///< two-sided, output
        std::function<void(const std::string& mode)> colorMatching;
        std::function<void(const std::string& pageSize)> scaling; ///< empty: the document's own size
        std::function<void(bool)> remember;
        std::function<void()> pagesEdited;
        std::function<void()> sizeChanged; ///< rows came or went
    };

    GeneralPage(const Language& language, Choices choices);

    /// The letters that the dialog around it has for its own mnemonics.
    void setTakenLetters(const QString& letters);

    void addPrinters(const QStringList& names);
    /// Puts a control beside the list of printers, which owns it from then on.
    void addBesidePrinters(QWidget& control);
    void selectPrinter(int index); ///< -1: none
    /// Whether printers are still being looked for.
    void setLooking(bool looking);
    void setFolderShown(bool shown);
    void setFolder(const QString& folder);
    [[nodiscard]] QString folder() const;
    void setCopies(int copies);
    [[nodiscard]] int copies() const;
    void setPages(const QString& pages);
    [[nodiscard]] QString pages() const;
    void focusFirst();
    void focusPages();
    void setRemembers(bool remembers);
    [[nodiscard]] bool remembers() const;

    /// Shows what the session holds; null: there is no printer.
    void show(Session* session);
    /// After a change of fonts.
    void fitFields();

private:
    QLabel* addRow(Text text, QWidget& field, QLayout* row = nullptr); ///< null: the field alone
    void fillPapers(const printing::PrinterDescription& description);
    void showPaper(Session& session);
    void fillChoices(QComboBox& list, const printing::PrinterDescription& description, std::string_view option);
    void userChosePaper();
    void showRow(QWidget& field, bool shown);

    Language language_;
    QString takenLetters_;
    Choices choices_;
    Session* session_ = nullptr;
    QFormLayout* layout_;
    QHBoxLayout* printerRow_;
    QComboBox* printerList_;
    QLabel* lookingLabel_;
    QWidget* folderRow_;
    QLineEdit* folderField_;
    PopUpBox* paperList_;
    FreeSizeEditor* freeSize_;
    QSpinBox* copiesField_;
    QLineEdit* pagesField_;
    QComboBox* twoSidedList_;
    QComboBox* outputList_;
    QComboBox* colorMatchingList_;
    PopUpBox* scalingList_;
    QCheckBox* rememberBox_;
};

} // namespace host
