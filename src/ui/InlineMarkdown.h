#pragma once

#include <QString>

// Inline Markdown (emphasis, strong emphasis, code spans, links, backslash escapes) as
// rich text for a label. Block syntax is not looked at: a line that starts with "#" or
// "1." stays as it is. Line breaks and runs of blanks are kept. A delimiter without its
// partner stays literal.
namespace InlineMarkdown {

QString toHtml(const QString &markdown);

} // namespace InlineMarkdown
