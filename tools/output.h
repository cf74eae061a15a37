/* Output files that appear whole or not at all. */
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

/* Replaces `file` by `content` and makes its folder where it is missing. Throws when that fails; the old file stays. */
void write_file(const std::filesystem::path &file, std::string_view content);

/* A folder of files that takes the place of a former one at once: what the former one held is gone. */
class OutputFolder
{
public:
    explicit OutputFolder(const std::filesystem::path &folder);
    ~OutputFolder();
    OutputFolder(const OutputFolder &) = delete;
    OutputFolder &operator=(const OutputFolder &) = delete;

    /* Adds a file. */
    void write(const std::string &name, std::string_view content);

    /* Puts the files in place; without it they are dropped. */
    void replace();

private:
    std::filesystem::path folder_;
    std::filesystem::path fresh_; // where the files are written
};
