#include "platform/desk/settings_file.h"

#include "platform/nvram.h"
#include "tests/platform/desk_folder.h"

#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

/* The renameat that the store finds in this program: it fails on demand. */
static bool fail_rename;
extern "C" int renameat(int old_folder, const char *old_path, int new_folder, const char *new_path) noexcept
{
    if (!fail_rename)
        return static_cast<int>(syscall(SYS_renameat2, old_folder, old_path, new_folder, new_path, 0));
    errno = EIO;
    return -1;
}

/* A copy that was handed out; "(null)" for none. */
static std::string take(char *value)
{
    const std::string text = value ? value : "(null)";
    free(value);
    return text;
}

class SettingsStore : public testing::Test
{
protected:
    ~SettingsStore() override { std::filesystem::remove(path); }

    std::string get(const std::string &key) const { return take(settings_get(file, key.c_str())); }
    int set(const std::string &key, const std::string &value) const
    {
        return settings_set(file, key.c_str(), value.c_str());
    }

    const std::filesystem::path path = desk_folder() / "tmp/store";
    const SettingsFile file = {AT_FDCWD, path.c_str()};
};

TEST_F(SettingsStore, GivesBackAnyValue)
{
    const std::string values[] = {"", "a\\x\"\n=\x01\x7f\xff", std::string(1 << 20, '\n')};
    for (const std::string &value : values)
        ASSERT_EQ(set(std::to_string(value.size()), value), 0);
    for (const std::string &value : values)
        EXPECT_EQ(get(std::to_string(value.size())), value);
}

TEST_F(SettingsStore, KeepsLinesThatAreNoSettings)
{
    EXPECT_EQ(get("a"), "(null)") << "no file yet";
    const std::string nuls("n=\\x00\nm=\0\n", 11);
    write_file(path, "# by hand\n\na=\\q\nab=1=\na=2\n=x\nno sign\na=3\n" + nuls + "b=last");
    EXPECT_EQ(get("a"), "2") << "the first well-formed line";
    EXPECT_EQ(get("ab"), "1=");
    EXPECT_EQ(get("b"), "last");
    EXPECT_EQ(get("n") + get("m"), "(null)(null)") << "no value can hold a NUL";
    write_file(path.string() + ".new", std::string(1000, '?')); // of a writer that was killed
    EXPECT_EQ(set("a", "new"), 0);
    EXPECT_EQ(set("c", ""), 0);
    EXPECT_EQ(read_file(path), "# by hand\n\na=new\nab=1=\n=x\nno sign\n" + nuls + "b=last\nc=\n");
}

TEST_F(SettingsStore, StaysAsItWasWhenAChangeFails)
{
    ASSERT_EQ(set("a", "old"), 0);
    for (const char *key : {"", "a=b", "a\nb"})
        EXPECT_EQ(set(key, "new"), -1) << key;
    EXPECT_EQ(errno, EINVAL);
    fail_rename = true;
    EXPECT_EQ(set("a", "new"), -1);
    EXPECT_EQ(errno, EIO);
    fail_rename = false;
    const std::filesystem::path next = path.string() + ".new";
    EXPECT_FALSE(std::filesystem::exists(next));
    std::filesystem::create_symlink("/dev/full", next);
    EXPECT_EQ(set("a", "new"), -1);
    EXPECT_EQ(errno, ENOSPC);
    std::filesystem::create_directory(next);
    EXPECT_EQ(set("a", "new"), -1);
    EXPECT_EQ(errno, EISDIR);
    std::filesystem::remove(next);
    EXPECT_EQ(settings_copy({AT_FDCWD, "/tmp"}, file), -1);
    EXPECT_EQ(read_file(path), "a=old\n");
    EXPECT_EQ(settings_set({AT_FDCWD, "/tmp"}, "a", "1"), -1) << "what cannot be read is not replaced";
    const std::string longest = std::string(PATH_MAX - path.string().size() - 1, '/') + path.string();
    EXPECT_EQ(settings_set({AT_FDCWD, longest.c_str()}, "a", "1"), -1) << "no room for the names beside it";
    EXPECT_EQ(errno, ENAMETOOLONG);
}

TEST_F(SettingsStore, LosesNothingOfTwoWriters)
{
    constexpr int CHANGES = 200;
    const auto write = [this](const std::string &writer) {
        for (int i = 0; i < CHANGES; i++)
            set(writer + std::to_string(i), writer);
    };
    const pid_t child = fork();
    if (child == 0) {
        write("child");
        _exit(0);
    }
    write("parent");
    waitpid(child, nullptr, 0);
    for (int i = 0; i < CHANGES; i++)
        for (const std::string writer : {"child", "parent"})
            EXPECT_EQ(get(writer + std::to_string(i)), writer);
}

TEST_F(SettingsStore, IsTheRoutersWhichRemembersWhatWasCommitted)
{
    const std::filesystem::path folder = desk_folder() / "nvram";
    EXPECT_EQ(take(nvram_get("language_lcd")), "(null)");
    EXPECT_EQ(take(nvram_safe_get("language_lcd")), "");
    EXPECT_EQ(nvram_set("language_lcd", "de"), 0);
    EXPECT_EQ(nvram_commit(), 0);
    EXPECT_EQ(nvram_set("language_lcd", "fr"), 0);
    EXPECT_EQ(read_file(folder / "committed"), "language_lcd=de\n");
    write_file(folder / "running", "language_lcd=ru\n");
    EXPECT_EQ(take(nvram_get("language_lcd")), "ru") << "read afresh";
}
