#pragma once

#include "platform/UserDefaults.h"
#include "platform/desktop/FileWatch.h"

#include <QString>
#include <QVariantMap>

namespace Orbita {

/// Preferences in a property list file, which other programs may change at any time.
///
/// A write takes over what others wrote since, then replaces the file at once. A damaged file is set aside as it is
/// found, and its place is taken by the values known until then. While the file cannot be read, or set aside, it is
/// left alone and values stay in memory; so do values that could not be written, until a later write succeeds.
class FileUserDefaults final : public UserDefaults {
    Q_OBJECT
public:
    /// Reads the file at \a path, which need not exist. Its folder must.
    explicit FileUserDefaults(const QString &path, QObject *parent = nullptr);

    [[nodiscard]] QVariant value(const QString &key) const override;
    void setValue(const QString &key, const QVariant &value) override;
    bool synchronize() override;

private:
    [[nodiscard]] QVariantMap values() const;
    void reload();
    void readFile();
    void setAside();
    void keepAsUnsaved();
    void save();
    void warnOnce(const char *problem);

    QString m_path;
    QVariantMap m_saved;   ///< as the file was read or written last
    QVariantMap m_unsaved; ///< what is to change in the file; an invalid value removes its key
    bool m_isWritable = true;
    bool m_hasWarned = false;
    FileWatch m_watch;
};

} // namespace Orbita
