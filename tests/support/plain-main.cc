#include <giomm/init.h>
#include <glibmm/init.h>
#include <gtest/gtest.h>

#include <clocale>

int main(int argc, char** argv)
{
  std::setlocale(LC_ALL, "");
  Glib::init();
  Gio::init();
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
