#pragma once

#include <QImage>

#include <string>

namespace host {

/// What the window shows of a document beside its name.
struct DocumentFacts {
    bool isReadable = false; ///< false: the file is missing, or is no picture and no PDF that can be read here
    int pages = 0;           ///< 0: not known
    QImage thumbnail;        ///< of the first page, within the side that was asked for; null where there is none
};

/// Reads a picture, or a PDF where the module for these is installed. `side` in pixels. The file is untrusted: pictures
/// that need much memory are not read. May take its time, so call it from a thread of its own.
[[nodiscard]] DocumentFacts readDocument(const std::string& path, int side);

/// The exported name of the module for PDFs, and its type.
inline constexpr const char* kPdfReaderSymbol = "CVReadPdf";
using PdfReader = void(const char* path, int side, DocumentFacts& facts);

} // namespace host

extern "C" void CVReadPdf(const char* path, int side, host::DocumentFacts& facts);
