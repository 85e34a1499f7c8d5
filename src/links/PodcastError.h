#pragma once

#include "core/UserError.h"

#include <QByteArray>
#include <QString>

// Why a pasted link gave no media file. `errorDescription` is the text the user sees,
// telling what to try instead.
class PodcastError : public UserError {
public:
    enum class Case { network, invalidURL, spotify, appleNotFound, noEnclosure, unsupported };

    static PodcastError network(const QString &message) { return {Case::network, message}; }
    static PodcastError invalidURL() { return {Case::invalidURL, {}}; }
    static PodcastError spotify() { return {Case::spotify, {}}; }
    static PodcastError appleNotFound() { return {Case::appleNotFound, {}}; }
    static PodcastError noEnclosure() { return {Case::noEnclosure, {}}; }
    static PodcastError unsupported() { return {Case::unsupported, {}}; }

    Case kind() const { return m_case; }
    // The transfer layer's text, or "HTTP " and the status; only for `network`.
    const QString &message() const { return m_message; }

    QString errorDescription() const override;

private:
    PodcastError(Case c, QString message) : m_case(c), m_message(std::move(message)) {}

    Case m_case;
    QString m_message;
};
