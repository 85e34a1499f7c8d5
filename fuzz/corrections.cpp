// Correction rules as stored (a JSON list), laid over a text: the one pass and the
// matches of each rule. The rules come first, up to a NUL byte; the text follows.
#include "review/Corrections.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    const qsizetype nul = bytes.indexOf('\0');
    QList<Correction> rules;
    for (const QJsonValue &value : QJsonDocument::fromJson(bytes.left(nul < 0 ? 0 : nul)).array()) {
        if (const std::optional<Correction> rule = Correction::fromJson(value))
            rules.append(*rule);
    }
    const QString text = QString::fromUtf8(nul < 0 ? bytes : bytes.mid(nul + 1));
    const Corrections::Applied applied = Corrections::apply(rules, text);
    qsizetype last = 0;
    for (const Corrections::Range &r : applied.ranges) {
        if (r.start < last || r.end < r.start || r.end > applied.text.size())
            __builtin_trap();
        last = r.end;
    }
    for (const Correction &rule : rules)
        (void)Corrections::matchRanges(rule.from, rule.caseSensitive, rule.wholeWord, text);
    return 0;
}
