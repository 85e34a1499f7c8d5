#pragma once

#include <QString>

// A transcript as a minimal Word document (Office Open XML): the title in bold 16 pt and
// an empty paragraph, then the body in 12 pt, each line of it a paragraph.
namespace DocxExporter {

// Failures are silent: no file, or the old one untouched.
void write(const QString &title, const QString &body, const QString &path);

} // namespace DocxExporter
