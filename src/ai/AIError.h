#pragma once

#include "core/UserError.h"

#include <QString>

// The failures of AI refinement. `errorDescription` is the text the user sees; the HTTP
// and network texts keep their German prefixes in every interface language.
class AIError : public UserError {
public:
    enum class Case { http, network, noKey, refusal, badResponse };

    static AIError http(int status, const QString &message) { return {Case::http, status, message}; }
    static AIError network(const QString &message) { return {Case::network, 0, message}; }
    static AIError noKey() { return {Case::noKey, 0, {}}; }
    static AIError refusal() { return {Case::refusal, 0, {}}; }
    static AIError badResponse() { return {Case::badResponse, 0, {}}; }

    Case kind() const { return m_case; }
    int status() const { return m_status; }
    const QString &message() const { return m_message; }

    QString errorDescription() const override;

private:
    AIError(Case c, int status, QString message) : m_case(c), m_status(status), m_message(std::move(message))
    {
    }

    Case m_case;
    int m_status;
    QString m_message;
};
