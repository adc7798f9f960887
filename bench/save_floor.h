#pragma once

#include <string>
#include <vector>

/// What the statements of a save cost with nothing in between: the engines' own C interfaces, each statement
/// prepared once, its values bound. Ends the process with a message where anything fails.

struct save_floor;

/// A header of dues: the member and the year that a save is for.
struct member_year {
    std::string pers_no;
    std::string val_year;
    std::string code_member;

    bool operator==(const member_year&) const = default;
};

/// A server is a register's file, or postgresql:<connection text>; `local_file` is a workstation's.
save_floor* open_save_floor(const char* server, const char* local_file);
void close_save_floor(save_floor* floor);

/// Sends the statements of "registration", "payment" or "change", as floor_statements.h has them.
void save_on_floor(save_floor* floor, const std::string& save, const member_year& whose);

/// The latest year of each member whose name is like the pattern, in the order of their numbers.
std::vector<member_year> latest_years(const char* server, const char* name_pattern);

/// Gives members of such a name what a change of them goes through and the demo hardly has: a pledge with an
/// instalment, and a place on the hygiene list of another branch.
void add_rows_of_cascade(const char* server, const char* name_pattern);

/// What the saves of these members left in the tables that saves write, a row to a line, sorted: the table's
/// name, then each field behind its kind.
std::vector<std::string> stored_rows(const char* server, const std::vector<member_year>& of);
/// The same of the workstation's copy.
std::vector<std::string> copied_rows(const char* local_file, const std::vector<member_year>& of);
