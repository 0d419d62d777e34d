#include "host/window/document_view.h"

#include <QCoreApplication>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QThreadPool>
#include <QTimer>
#include <QVBoxLayout>

#include <utility>

namespace host {
namespace {

constexpr int kPictureLines = 3; // the picture's side in lines of text

} // namespace

DocumentView::DocumentView(const Language& language, const QString& name, std::vector<std::string> documents)
    : language_(language), documents_(std::move(documents)), picture_(new QLabel(this)), details_(new QLabel(this)) {
    auto* nameLabel = new QLabel(name, this);
    nameLabel->setObjectName("documentName");
    nameLabel->setTextFormat(Qt::PlainText);
    nameLabel->setWordWrap(true);
    QFont bold = nameLabel->font();
    bold.setBold(true);
    nameLabel->setFont(bold);
    details_->setObjectName("documentDetails");
    details_->setTextFormat(Qt::PlainText);
    details_->setWordWrap(true);
    picture_->setObjectName("documentPicture");
    picture_->setAlignment(Qt::AlignCenter);
    QSizePolicy policy = picture_->sizePolicy();
    policy.setRetainSizeWhenHidden(true); // so that nothing moves when it comes
    picture_->setSizePolicy(policy);
    picture_->hide();
    auto* texts = new QVBoxLayout;
    texts->setSpacing(0);
    texts->addWidget(nameLabel);
    texts->addWidget(details_);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(picture_);
    layout->addLayout(texts, 1);
    details_->setText(documents_.empty()       ? windowText(Text::NoDocument, language_)
                      : documents_.size() == 1 ? windowText(Text::OneDocument, language_)
                                               : windowText(Text::Documents, language_).arg(documents_.size()));
    fitPicture();
}

void DocumentView::fitPicture() {
    picture_->setFixedSize(QSize(1, 1) * (documents_.empty() ? 0 : kPictureLines * fontMetrics().lineSpacing()));
}

void DocumentView::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() != QEvent::FontChange)
        return;
    fitPicture();
    if (isRead_)
        readFirst(); // in its new size
}

void DocumentView::paintEvent(QPaintEvent* event) {
    QWidget::paintEvent(event);
    if (!documents_.empty() && !std::exchange(isRead_, true))
        QTimer::singleShot(0, this, [this] { readFirst(); }); // when all of the window has been painted
}

void DocumentView::readFirst() {
    const int side = static_cast<int>(picture_->width() * devicePixelRatioF());
    // The dialog may be closed before its document is read. The application, which waits for its threads, is not.
    QThreadPool::globalInstance()->start([view = QPointer(this), application = QCoreApplication::instance(), side,
                                          path = documents_.front(), reading = ++readings_] {
        QMetaObject::invokeMethod(application, [view, reading, facts = readDocument(path, side)] {
            if (view != nullptr && view->readings_ == reading) // else a later one is on its way
                view->show(facts);
        });
    });
}

void DocumentView::show(const DocumentFacts& facts) {
    QStringList told;
    if (documents_.size() > 1)
        told << windowText(Text::Documents, language_).arg(documents_.size());
    else if (facts.pages == 1)
        told << windowText(Text::OnePage, language_);
    else if (facts.pages > 1)
        told << windowText(Text::NumberOfPages, language_).arg(facts.pages);
    if (!facts.isReadable)
        told << windowText(Text::NotReadable, language_);
    details_->setText(told.join(u' '));
    if (facts.thumbnail.isNull())
        return;
    QPixmap pixmap = QPixmap::fromImage(facts.thumbnail);
    pixmap.setDevicePixelRatio(devicePixelRatioF());
    picture_->setPixmap(pixmap);
    picture_->setAccessibleName(windowText(Text::FirstPage, language_));
    picture_->show();
}

} // namespace host
