// The module that reads PDFs. It is built where the library for these is there, and loaded with the first PDF.

#include "host/window/document_facts.h"

#include <poppler-qt6.h>

#include <algorithm>
#include <memory>

extern "C" __attribute__((visibility("default"))) void CVReadPdf(const char* path, int side,
                                                                 host::DocumentFacts& facts) {
    constexpr double kPointsPerInch = 72;
    Poppler::setDebugErrorFunction([](const QString&, const QVariant&) {}, QVariant());
    const std::unique_ptr<Poppler::Document> document = Poppler::Document::load(QString::fromUtf8(path));
    if (document == nullptr || document->isLocked())
        return;
    facts.isReadable = true;
    facts.pages = document->numPages();
    const std::unique_ptr<Poppler::Page> page = document->page(0);
    const QSizeF size = page == nullptr ? QSizeF() : page->pageSizeF();
    if (size.isEmpty())
        return;
    document->setRenderHint(Poppler::Document::Antialiasing);
    document->setRenderHint(Poppler::Document::TextAntialiasing);
    const double resolution = kPointsPerInch * side / std::max(size.width(), size.height());
    facts.thumbnail = page->renderToImage(resolution, resolution);
}
