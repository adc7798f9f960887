#include "db/connection.h"
#include "db/driver.h"

namespace orvo {

void repeated_write::operator()(std::span<const cell> fields)
{
    // An empty text or a null that meets a number column is 0 there, as in any statement. Decimals
    // of another register's amounts are left out.
    fields_.assign(fields.begin(), fields.end());
    for (std::size_t i = 0; i < fields_.size(); ++i) {
        cell& field = fields_[i];
        if (!text_->parameters[i].is_number()) {
            if (field.is == cell::kind::null)
                field = cell::of(std::string_view{});
        } else if (field.is != cell::kind::number) {
            field = cell::of(text_->number_of(text_->parameters[i], field.text));
        }
    }
    try {
        write_past_the_watch(*way_, [this] { way_->run_again(*text_, fields_); });
    } catch (db_failure& failure) {
        failure.name(QString::fromStdString(text_->text));
        throw;
    }
}

} // namespace orvo
