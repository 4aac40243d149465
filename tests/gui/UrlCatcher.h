#pragma once

#include <QDesktopServices>
#include <QList>
#include <QUrl>

namespace support {

/// Takes the addresses of a scheme that are handed to the desktop.
class UrlCatcher : public QObject
{
    Q_OBJECT

public:
    explicit UrlCatcher(const QString& scheme) : m_scheme(scheme)
    {
        QDesktopServices::setUrlHandler(scheme, this, "take");
    }
    ~UrlCatcher() override { QDesktopServices::unsetUrlHandler(m_scheme); }

    QList<QUrl> urls;

public Q_SLOTS:
    void take(const QUrl& url) { urls.append(url); }

private:
    QString m_scheme;
};

} // namespace support
