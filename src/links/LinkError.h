#pragma once

#include "core/UserError.h"

#include <QByteArray>
#include <QString>

// Why a pasted link gave no media file. `errorDescription` is the text the user sees,
// telling what to try instead.
class LinkError : public UserError {
public:
    enum class Case { network, invalidURL, spotify, appleNotFound, noEnclosure, unsupported };

    static LinkError network(const QString &message) { return {Case::network, message}; }
    static LinkError invalidURL() { return {Case::invalidURL, {}}; }
    static LinkError spotify() { return {Case::spotify, {}}; }
    static LinkError appleNotFound() { return {Case::appleNotFound, {}}; }
    static LinkError noEnclosure() { return {Case::noEnclosure, {}}; }
    static LinkError unsupported() { return {Case::unsupported, {}}; }

    Case kind() const { return m_case; }
    // The transfer layer's text, or "HTTP " and the status; only for `network`.
    const QString &message() const { return m_message; }

    QString errorDescription() const override;

private:
    LinkError(Case c, QString message) : m_case(c), m_message(std::move(message)) {}

    Case m_case;
    QString m_message;
};
