#pragma once

#include <QByteArray>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QString>

#include <cstdint>
#include <cstring>

// Takes leading numbers off a fuzzer's input; what is left is the document.
class FuzzInput {
public:
    FuzzInput(const uint8_t *data, size_t size) : m_data(data), m_size(size) {}

    template<typename T> T take()
    {
        T value{};
        const size_t n = std::min(sizeof(T), m_size);
        std::memcpy(&value, m_data, n);
        m_data += n;
        m_size -= n;
        return value;
    }
    QByteArray rest() const { return QByteArray(reinterpret_cast<const char *>(m_data), qsizetype(m_size)); }

private:
    const uint8_t *m_data;
    size_t m_size;
};

// Bytes into a file of the process's own scratch folder, for readers that take paths.
inline QString scratchFile(const QString &name, const QByteArray &bytes)
{
    static const QString folder = [] {
        const QString path = QDir::tempPath() + QStringLiteral("/sagwerk-fuzz-%1").arg(QCoreApplication::applicationPid());
        QDir().mkpath(path);
        return path;
    }();
    const QString path = folder + u'/' + name;
    QFile file(path);
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        file.write(bytes);
    return path;
}
