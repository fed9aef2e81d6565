#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <QString>

#include <memory>

namespace Orbita {

/// Tells when the content of one file may have changed: it was written and closed, replaced, removed or made
/// readable. A write that is still going on is not reported, so that no half of a file is read.
class FileWatch : public QObject {
    Q_OBJECT
public:
    /// Watches the file at \a path, which need not exist, in its folder, which must. A symbolic link is followed:
    /// what it leads to now is watched as well.
    explicit FileWatch(const QString &path, QObject *parent = nullptr);
    ~FileWatch() override;

Q_SIGNALS:
    void changed();

private:
    void watchFolders();
    void readEvents();

    QString m_path;
    int m_descriptor = -1;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace Orbita
