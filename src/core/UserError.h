#pragma once

#include <QByteArray>
#include <QString>

#include <exception>

// The base of every error a job can end with: `errorDescription` is the text the user
// sees, already in the interface language. A cancel is an error too, and shows nothing.
class UserError : public std::exception {
public:
    virtual QString errorDescription() const = 0;
    // What a program or library said itself, for whoever wants to look closer; the user
    // is not expected to read it.
    virtual QString details() const { return {}; }
    virtual bool isCancelled() const { return false; }

    const char *what() const noexcept override;

private:
    mutable QByteArray m_what;
};

// What a cancelled job says where it says anything.
QString cancelledText();

// A job that ended because its control was cancelled, where the subsystem has no
// error case of its own for that.
class Cancelled : public UserError {
public:
    QString errorDescription() const override { return {}; }
    bool isCancelled() const override { return true; }
};
