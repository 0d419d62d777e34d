#include "host/window/help_viewer.h"

#include "host/window/mnemonics.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QTextBrowser>
#include <QUrl>
#include <QVBoxLayout>

namespace host {
namespace {

constexpr QSize kSize(640, 520); // pixels

// Reads pages beside the one that is shown, and nothing from elsewhere.
class PageBrowser : public QTextBrowser {
public:
    using QTextBrowser::QTextBrowser;

protected:
    void doSetSource(const QUrl& name, QTextDocument::ResourceType type) override {
        const QUrl resolved = source().resolved(name);
        if (resolved.isLocalFile())
            QTextBrowser::doSetSource(resolved, type);
    }
    QVariant loadResource(int type, const QUrl& name) override {
        const QUrl resolved = source().resolved(name);
        return resolved.isLocalFile() ? QTextBrowser::loadResource(type, resolved) : QVariant();
    }
};

} // namespace

HelpViewer::HelpViewer(QWidget& window, const Language& language) : QDialog(&window), browser_(new PageBrowser(this)) {
    setModal(false);
    resize(kSize);
    browser_->setOpenExternalLinks(false);
    browser_->setAccessibleName(windowText(Text::Help, language));
    setWindowTitle(windowText(Text::Help, language));
    QString taken;
    auto* buttons = new QDialogButtonBox(this);
    auto* back = buttons->addButton(QString(), QDialogButtonBox::ActionRole);
    auto* close = buttons->addButton(QString(), QDialogButtonBox::RejectRole);
    setTextWithMnemonic(*back, windowText(Text::Back, language), taken);
    setTextWithMnemonic(*close, windowText(Text::Close, language), taken);
    back->setEnabled(false);
    connect(back, &QPushButton::clicked, browser_, &QTextBrowser::backward);
    connect(browser_, &QTextBrowser::backwardAvailable, back, &QWidget::setEnabled);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    connect(browser_, &QTextBrowser::sourceChanged, this, [this, language] {
        const QString title = browser_->documentTitle();
        setWindowTitle(title.isEmpty() ? windowText(Text::Help, language) : title);
    });
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(browser_);
    layout->addWidget(buttons);
}

void HelpViewer::showPage(const std::filesystem::path& page) {
    browser_->setSource(QUrl::fromLocalFile(QString::fromStdString(page.string())));
    browser_->setFocus();
    show();
    raise();
    activateWindow();
}

} // namespace host
