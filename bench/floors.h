#pragma once

/// What a search costs with nothing in between: the engines' own C interfaces, prepared statements, one
/// transaction. The floors end the process with a message where anything fails, as a floor that did half the
/// work would be no floor.

struct search_floor;

/// `local_file` has the tables of a workstation's file; the floor writes only into its `person_m_tbl`.
search_floor* open_floor_on_file(const char* register_file, const char* local_file);
search_floor* open_floor_on_postgresql(const char* connection_text, const char* local_file);
void close_floor(search_floor* floor);

/// Replaces the copy by the members whose name is like the pattern, in the order of their numbers, and reads
/// the first page of it. Returns the number of members.
long run_floor(search_floor* floor, const char* name_pattern);

/// Whether the copies in two local files hold the same rows in the same order; tells the first difference on
/// stderr.
bool are_same_copies(const char* one_file, const char* other_file);
