#pragma once

#include "db/cell.h"

#include <QString>

#include <optional>
#include <string>
#include <vector>

namespace orvo {

/// The rows of a statement, read to their end. Columns are found by name, without case; of several columns of
/// one name the first. A name that the statement does not bring is the caller's mistake (std::logic_error).
/// Registers that exist pad their texts and keep amounts as 50000.00: of a server's columns blanks at the end
/// are cut, and of whole numbers what stands behind a point.
class rows : public row_sink {
public:
    class row {
    public:
        row(const rows& all, std::size_t index) : all_{&all}, index_{index} {}

        QString text(std::string_view column) const;  ///< a null is an empty text
        qint64 number(std::string_view column) const; ///< the whole part; an empty text or a null is 0
        bool is_null(std::string_view column) const;

    private:
        const std::string* find(std::string_view column) const;

        const rows* all_;
        std::size_t index_;
    };

    class iterator {
    public:
        iterator(const rows& all, std::size_t index) : all_{&all}, index_{index} {}
        row operator*() const { return {*all_, index_}; }
        iterator& operator++()
        {
            ++index_;
            return *this;
        }
        bool operator!=(const iterator& other) const { return index_ != other.index_; }

    private:
        const rows* all_;
        std::size_t index_;
    };

    bool empty() const { return fields_.empty(); }
    std::size_t size() const { return fields_.size(); }
    row operator[](std::size_t index) const { return {*this, index}; }
    row front() const { return {*this, 0}; }
    iterator begin() const { return {*this, 0}; }
    iterator end() const { return {*this, size()}; }
    const std::vector<std::string>& columns() const { return names_; }

    void begin(const column_names& names) override;
    bool take(std::span<const cell> fields) override;

private:
    enum class reading { as_it_is, without_padding, whole_number };

    std::size_t index_of(std::string_view column) const;
    static reading reading_of(std::string_view column);
    static std::string read(std::string_view text, reading how);

    std::vector<std::string> names_;
    std::vector<reading> readings_;
    std::vector<std::vector<std::optional<std::string>>> fields_;
};

} // namespace orvo
