#pragma once

#include "orvo_db/console.h"
#include "orvo_db/context.h"

#include <QCommandLineParser>

namespace orvo::tool {

struct command {
    const char* name;
    const char* summary;
    void (*describe)(QCommandLineParser& line); ///< adds its options and arguments
    /// Throws usage_error, tool_failure, setup::refusal or db_failure.
    void (*run)(const QCommandLineParser& line, const context& in);
};

extern const command check_command;
extern const command init_command;
extern const command operator_command;
extern const command dump_command;
extern const command sync_codes_command;
extern const command demo_command;
extern const command import_zip_command;

/// Refuses arguments beyond the first `most`.
void expect_arguments(const QCommandLineParser& line, qsizetype most);
/// An option's whole number. Throws usage_error where it is none, or out of bounds.
int number_of(const QCommandLineParser& line, const QString& option, int low, int high);

/// Makes what is missing of a database. Where it is to tell, it says what it made and what it found.
void make_schema(const context& in, database which, bool tell);

} // namespace orvo::tool
