#pragma once

#include "dues/receipts/rules/receipt_queue.h"

#include <QString>

class QPrinter;

namespace orvo {

class progress;

/// Which pages of the queue, from 1.
struct page_range {
    int first;
    int last;
};

// Both throw db_failure with a sentence for the operator; cancelled where the progress, which hears the pages
// so far, said so.

/// Sends pages to the printer.
void print_receipts(QPrinter& to, const std::vector<receipt>& all, page_range which,
                    progress* follow = nullptr);

/// Writes all pages beside the file of that name, and gives it the name at the end: after a failure the name
/// holds what it held before. The fonts are in the file.
void write_receipts(const QString& path, const std::vector<receipt>& all, progress* follow = nullptr);

} // namespace orvo
