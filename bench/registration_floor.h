#pragma once

#include <string>
#include <vector>

/// What the statements of a registration cost with nothing in between: the engines' own C interfaces, each
/// statement prepared once, its values bound. Ends the process with a message where anything fails.

struct registration_floor;

/// `server` is a register's file, or postgresql:<connection text>.
registration_floor* open_registration_floor(const char* server);
void close_registration_floor(registration_floor* floor);

/// Looks for the number and stores a member of it, the dues of the year, a payment, a pledge and a workplace.
void register_on_floor(registration_floor* floor, const char* pers_no);

/// What the registrations of a benchmark left in a register, a row to a line, with the table's name and the
/// types of the fields. Its members are those whose number has a 9 behind the date of birth.
std::vector<std::string> stored_registrations(const char* server);
