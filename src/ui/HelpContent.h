#pragma once

#include <QList>
#include <QString>
#include <QStringList>

// One piece of a help section. Paragraphs, bullet items and tips carry inline Markdown;
// subheadings are plain text.
struct HelpBlock {
    enum class Kind { paragraph, subheading, bullets, tip };

    Kind kind = Kind::paragraph;
    QString text;      // all kinds but bullets
    QStringList items; // bullets

    static HelpBlock paragraph(const QString &text) { return {Kind::paragraph, text, {}}; }
    static HelpBlock subheading(const QString &text) { return {Kind::subheading, text, {}}; }
    static HelpBlock bullets(const QStringList &items) { return {Kind::bullets, {}, items}; }
    static HelpBlock tip(const QString &text) { return {Kind::tip, text, {}}; }
};

// One topic of the help. `id` is the same in both books, so a change of language keeps
// the topic on show; `icon` is a symbol name.
struct HelpSection {
    QString id;
    QString icon;
    QString title;
    QList<HelpBlock> blocks;
};

// The two help books, written into the program rather than translated through the
// catalogues: German and English, with the same sections in the same order.
namespace HelpContent {

const QList<HelpSection> &german();
const QList<HelpSection> &english();

// The book for a language code: German for codes that begin with "de", else English.
const QList<HelpSection> &book(const QString &languageCode);

} // namespace HelpContent
