#pragma once

#include <glibmm/miscutils.h>
#include <sys/stat.h>

#include <cstdlib>
#include <string>

// Creates a directory on another file system than `path` and returns its path. Returns an empty
// path if there is no other file system that the test can write to. The caller removes the
// directory.
inline std::string directory_on_another_file_system(const std::string& path)
{
  struct stat here = {};
  stat(path.c_str(), &here);
  for (const std::string& place : {std::string("/dev/shm"), std::string("/run"),
                                   Glib::get_home_dir(), std::string("/var/tmp")}) {
    struct stat there = {};
    std::string name = place + "/mavo-test-XXXXXX";
    if (stat(place.c_str(), &there) == 0 && there.st_dev != here.st_dev && mkdtemp(name.data()))
      return name;
  }
  return {};
}
