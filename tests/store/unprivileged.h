#pragma once

#include <gtest/gtest.h>
#include <sys/fsuid.h>
#include <unistd.h>

#include <filesystem>

// The id of the user and the group nobody.
constexpr uid_t nobody = 65534;

// During its lifetime, this thread accesses files as the user nobody, because root has all
// permissions. Has no effect if another user runs the tests.
class Unprivileged
{
public:
  Unprivileged()
  {
    if (geteuid() != 0)
      return;
    setfsgid(nobody);
    setfsuid(nobody);
    EXPECT_EQ(static_cast<int>(nobody), setfsuid(nobody))
        << "the thread did not become the user nobody";
  }
  ~Unprivileged()
  {
    setfsuid(geteuid());
    setfsgid(getegid());
  }
  Unprivileged(const Unprivileged&) = delete;
  Unprivileged& operator=(const Unprivileged&) = delete;
};

// If root runs the tests, makes the user nobody the owner of `directory` and lets all users enter
// `from`, which is `directory` or a directory above it.
inline void hand_over(const std::filesystem::path& directory, const std::filesystem::path& from)
{
  if (geteuid() != 0)
    return;
  std::filesystem::permissions(from, std::filesystem::perms(0755));
  EXPECT_EQ(0, chown(directory.c_str(), nobody, nobody));
}

// During its lifetime, a file or directory has only these permissions.
class OnlyRights
{
public:
  OnlyRights(std::filesystem::path path, std::filesystem::perms rights)
      : file(std::move(path)), before(std::filesystem::status(file).permissions())
  {
    std::filesystem::permissions(file, rights);
  }
  ~OnlyRights() { std::filesystem::permissions(file, before); }
  OnlyRights(const OnlyRights&) = delete;
  OnlyRights& operator=(const OnlyRights&) = delete;

private:
  std::filesystem::path file;
  std::filesystem::perms before;
};
