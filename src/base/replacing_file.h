// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/byte_sink.h"
#include "base/export.h"
#include "base/file.h"
#include "base/file_ops.h"

#include <sys/stat.h>

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace tessaro {

/// A file that takes the place of the one of its name, or leaves that one untouched. The bytes go to a new file in the
/// same folder; commit() brings them onto the disk, reads them back, compares and only then gives them the name. At
/// every moment, a power cut included, the old bytes or all of the new ones stand under the name.
///
/// A symbolic link stays and its target is replaced. The new file keeps the old one's access rights, and its owner
/// where the system allows it. A file that this user may not write is not replaced. Without a commit() that succeeds
/// the new file is removed. One thread.
class TESSARO_API ReplacingFile final : public ByteSink {
public:
    ReplacingFile(const std::string& path, FileOps& files);
    ReplacingFile(const ReplacingFile&) = delete;
    ReplacingFile& operator=(const ReplacingFile&) = delete;
    ~ReplacingFile() override;

    /// False when the disk does not take the bytes, and from then on.
    bool write(std::span<const std::uint8_t> bytes) override;
    /// Once, after the last byte. The answer is the first error, those of writing included.
    [[nodiscard]] FileError commit();
    [[nodiscard]] FileError error() const noexcept { return m_error; }

private:
    bool fail(FileError error) noexcept;
    bool failWithErrno() noexcept;
    void create();
    void takeRights(const struct stat& old);
    bool flush();
    bool bringToDisk();
    bool readBack();
    bool takeName();

    FileOps& m_files;
    std::string m_target;
    std::string m_temporary; ///< empty when none stands
    std::vector<std::uint8_t> m_buffer;
    std::uint64_t m_sum = 0;
    std::uint64_t m_length = 0;
    int m_file = -1;
    FileError m_error = FileError::none;
};

} // namespace tessaro
