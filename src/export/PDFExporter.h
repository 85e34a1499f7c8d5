#pragma once

#include <QString>

// A transcript as a PDF with real, selectable text: A4 (595 × 842 pt) with 48 pt margins,
// the title in bold 16 pt and an empty line, then the body in 11.5 pt, paginated
// wherever the text overflows a page. Needs a GUI application object for its fonts.
namespace PDFExporter {

// Failures are silent: no file, or the old one untouched.
void write(const QString &title, const QString &body, const QString &path);

} // namespace PDFExporter
