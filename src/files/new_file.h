#pragma once

#include <QSaveFile>

namespace orvo {

/// A file that has its name only when it is complete. Throws db_failure with a sentence for the operator.
class new_file {
public:
    explicit new_file(const QString& path);

    void write(const char* bytes, qint64 count);
    /// For who writes into a device; what goes wrong there is thrown by finish().
    QIODevice& device() { return file_; }
    /// Brings it to the disk and gives it its name.
    void finish();

private:
    QSaveFile file_;
    qint64 written_ = 0;

    [[noreturn]] void give_up();
};

/// `place` is the file or folder that lies on the full disk.
[[noreturn]] void throw_disk_full(const QString& place);

} // namespace orvo
