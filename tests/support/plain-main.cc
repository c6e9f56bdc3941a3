#include <giomm/init.h>
#include <glibmm/init.h>
#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>

int main(int argc, char** argv)
{
  if (!std::setlocale(LC_ALL, "")) {
    std::fputs("there is no such locale\n", stderr); // tests would run in the C locale
    return 1;
  }
  Glib::init();
  Gio::init();
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
