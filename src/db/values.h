#pragma once

#include <QString>

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace orvo {

/// What the slots of one statement take: texts by slot name, as UTF-8. A NUL character, which would cut a
/// text short on its way to an engine, is dropped.
class values {
public:
    struct value {
        value(std::string_view of_slot, const QString& given);
        value(std::string_view of_slot, const char* given);
        value(std::string_view of_slot, qint64 number);
        value(std::string_view of_slot, int number) : value{of_slot, static_cast<qint64>(number)} {}

        std::string slot;
        std::string text;
    };

    values() = default;
    values(std::initializer_list<value> given) : values_{given} {}

    void add(value one) { values_.push_back(std::move(one)); }
    void add(const values& more) { values_.insert(values_.end(), more.values_.begin(), more.values_.end()); }

    /// The text for a slot. Throws std::logic_error where none was given: the caller's mistake, never the
    /// operator's.
    const std::string& of(std::string_view slot) const;
    /// Null where none was given.
    const std::string* find(std::string_view slot) const;
    auto begin() const { return values_.begin(); }
    auto end() const { return values_.end(); }

private:
    std::vector<value> values_;
};

} // namespace orvo
