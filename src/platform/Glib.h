#pragma once

// GLib's headers name things by words that Qt may define as macros: include this before any header of Qt.
#include <gio/gdesktopappinfo.h>
#include <gio/gio.h>

#include <QString>

#include <memory>

namespace Orbita {

struct GlibDeleter {
    void operator()(char *text) const { g_free(text); }
    void operator()(GKeyFile *file) const { g_key_file_unref(file); }
    void operator()(GSettingsSchema *schema) const { g_settings_schema_unref(schema); }
    void operator()(GVariant *value) const { g_variant_unref(value); }
};

struct GObjectDeleter {
    void operator()(gpointer object) const { g_object_unref(object); }
};

/// Owns one reference to an object of GLib's type system.
template <typename T>
using GObjectPointer = std::unique_ptr<T, GObjectDeleter>;

/// Owns text, a key file, a schema or a variant of GLib.
template <typename T>
using GlibPointer = std::unique_ptr<T, GlibDeleter>;

/// Receives the error of a GLib call: `call(..., error.out())`.
class GlibError {
public:
    GlibError() = default;
    ~GlibError() { g_clear_error(&m_error); }
    Q_DISABLE_COPY_MOVE(GlibError)

    [[nodiscard]] GError **out() { return &m_error; }
    [[nodiscard]] bool matches(GQuark domain, int code) const { return g_error_matches(m_error, domain, code); }
    [[nodiscard]] QString message() const
    {
        return m_error ? QString::fromUtf8(m_error->message).simplified() : QString();
    }

private:
    GError *m_error = nullptr;
};

} // namespace Orbita
