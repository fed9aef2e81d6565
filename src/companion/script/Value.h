#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>

#include <memory>
#include <variant>
#include <vector>

namespace Orbita {

class Value;

/// `missing value`, which is also the value of what has none.
struct MissingValue {
    friend bool operator==(MissingValue, MissingValue) { return true; }
};

/// A word that stands for itself: a class ("text"), a month ("March"), a weekday, "me", "AppleScript". Lower case.
struct Word {
    QString name;
    friend bool operator==(const Word &, const Word &) = default;
};

/// A file or folder, which need not exist.
struct FilePath {
    QString path; ///< a folder that is known as one ends with "/"
    friend bool operator==(const FilePath &, const FilePath &) = default;
};

/// An application as the script names it.
struct ApplicationName {
    QString name;
    friend bool operator==(const ApplicationName &, const ApplicationName &) = default;
};

/// A list. Copies are cheap, and a change of one never shows in another.
class ValueList {
public:
    ValueList() = default;
    explicit ValueList(std::vector<Value> items);

    [[nodiscard]] qsizetype size() const;
    [[nodiscard]] const Value &at(qsizetype index) const; ///< \a index from 0 to below size()
    [[nodiscard]] const std::vector<Value> &items() const &;
    void items() const && = delete;            ///< would be gone before it is gone through
    void insert(qsizetype index, Value value); ///< \a index from 0 to size()
    void replace(qsizetype index, Value value);

    /// How deep lists are nested in it, 1 for a list without any. An upper bound after replace().
    [[nodiscard]] int depth() const;
    /// How many items it has, those of nested lists included.
    [[nodiscard]] qint64 weight() const;

private:
    struct Data;
    Data &detach();
    std::shared_ptr<Data> m_data; ///< nothing: empty
};

/// Named values, in the order in which they were written.
struct ValueRecord {
    QStringList names; ///< lower case, each once
    ValueList values;  ///< as many as names

    [[nodiscard]] const Value *find(const QString &name) const;
};

/// Anything that a variable of a script can hold.
class Value : public std::variant<MissingValue, bool, qint64, double, QString, QDateTime, Word, FilePath,
                                  ApplicationName, ValueList, ValueRecord> {
public:
    using variant::variant;

    template <typename T>
    [[nodiscard]] const T *as() const
    {
        return std::get_if<T>(this);
    }
    template <typename T>
    [[nodiscard]] bool is() const
    {
        return std::holds_alternative<T>(*this);
    }
    [[nodiscard]] bool isNumber() const { return is<qint64>() || is<double>(); }
};

/// How many levels of lists and records \a value has; 0 for any other value.
[[nodiscard]] int nestingDepth(const Value &value);
/// 1 and the weights of what it holds.
[[nodiscard]] qint64 weight(const Value &value);

} // namespace Orbita
