#pragma once

#include "ui/HelpContent.h"

#include <initializer_list>

// Short builders for writing the help books as tables of UTF-8 literals.
namespace HelpBook {

inline HelpBlock p(const char *text)
{
    return HelpBlock::paragraph(QString::fromUtf8(text));
}

inline HelpBlock h(const char *text)
{
    return HelpBlock::subheading(QString::fromUtf8(text));
}

inline HelpBlock tip(const char *text)
{
    return HelpBlock::tip(QString::fromUtf8(text));
}

inline HelpBlock list(std::initializer_list<const char *> items)
{
    QStringList out;
    for (const char *item : items)
        out << QString::fromUtf8(item);
    return HelpBlock::bullets(out);
}

inline HelpSection section(const char *id, const char *icon, const char *title, QList<HelpBlock> blocks)
{
    return {QString::fromUtf8(id), QString::fromUtf8(icon), QString::fromUtf8(title), std::move(blocks)};
}

} // namespace HelpBook
