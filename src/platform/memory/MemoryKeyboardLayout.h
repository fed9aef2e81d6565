#pragma once

#include "platform/KeyboardLayout.h"

#include <QHash>

#include <utility>

namespace Orbita {

/// A layout of planted texts, which a test changes as a user does who picks another one.
class MemoryKeyboardLayout final : public KeyboardLayout {
    Q_OBJECT
public:
    using KeyboardLayout::KeyboardLayout;

    [[nodiscard]] QString text(quint16 virtualKeyCode) const override { return m_texts.value(virtualKeyCode); }

    /// Plants what stands on each key, by its virtual key code; other keys type nothing.
    void setTexts(QHash<quint16, QString> texts)
    {
        m_texts = std::move(texts);
        Q_EMIT changed();
    }

private:
    QHash<quint16, QString> m_texts;
};

} // namespace Orbita
