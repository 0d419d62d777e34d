#include "host/window/document_facts.h"

#include "host/session/program_files.h"

#include <QFile>
#include <QImageReader>
#include <QLibrary>

#include <algorithm>

namespace host {
namespace {

constexpr const char* kPdfBeginning = "%PDF-";
constexpr int kMostMegabytes = 128; // of a picture's pixels

bool isPdf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && file.read(1024).contains(kPdfBeginning);
}

// Loaded with the first PDF: its library is large. Null where it is not installed.
PdfReader* pdfReader() {
    static PdfReader* const reader = reinterpret_cast<PdfReader*>(
        QLibrary::resolve(QString::fromStdString(pathOfPdfModule().string()), kPdfReaderSymbol));
    return reader;
}

DocumentFacts readPicture(const QString& path, int side) {
    QImageReader reader(path);
    reader.setAutoTransform(true);
    reader.setDecideFormatFromContent(true);
    QImageReader::setAllocationLimit(kMostMegabytes);
    DocumentFacts facts;
    const QSize size = reader.size();
    if (size.isValid() && (size.width() > side || size.height() > side))
        reader.setScaledSize(size.scaled(side, side, Qt::KeepAspectRatio).expandedTo({1, 1}));
    facts.thumbnail = reader.read();
    facts.isReadable = !facts.thumbnail.isNull();
    facts.pages = facts.isReadable ? std::max(1, reader.imageCount()) : 0;
    if (facts.thumbnail.width() > side || facts.thumbnail.height() > side) // turned, or of unknown size before
        facts.thumbnail = facts.thumbnail.scaled(side, side, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    return facts;
}

} // namespace

DocumentFacts readDocument(const std::string& path, int side) {
    const QString name = QString::fromStdString(path);
    if (!isPdf(name))
        return readPicture(name, side);
    DocumentFacts facts;
    if (PdfReader* read = pdfReader())
        read(path.c_str(), side, facts);
    return facts;
}

} // namespace host
