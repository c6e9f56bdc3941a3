#pragma once

#include <gtest/gtest.h>
#include <sys/fsuid.h>
#include <unistd.h>

#include <filesystem>

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
    EXPECT_EQ(static_cast<int>(nobody), setfsuid(nobody)) << "the system knows no nobody";
  }
  ~Unprivileged()
  {
    setfsuid(geteuid());
    setfsgid(getegid());
  }
  Unprivileged(const Unprivileged&) = delete;
  Unprivileged& operator=(const Unprivileged&) = delete;
};

// If root runs the tests, gives the user nobody access to a new directory and to its parents up to
// the temporary directory.
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
      : of(std::move(path)), before(std::filesystem::status(of).permissions())
  {
    std::filesystem::permissions(of, rights);
  }
  ~OnlyRights() { std::filesystem::permissions(of, before); }
  OnlyRights(const OnlyRights&) = delete;
  OnlyRights& operator=(const OnlyRights&) = delete;

private:
  std::filesystem::path of;
  std::filesystem::perms before;
};
