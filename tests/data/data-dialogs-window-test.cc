#include "data/data-file-info.h"
#include "data/data-file.h"
#include "data/data-params.h"
#include "support/data-set.h"
#include "support/dialogs.h"

#include <gtest/gtest.h>
#include <gtkmm/dialog.h>
#include <gtkmm/enums.h>

#include <cstdint>
#include <filesystem>

TEST(DataDialogs, NameTheRowOfTheWrongWidth)
{
  const DataSet data;
  data.file("data-parameters.csv", "parameter,value\na,1\nb\n");
  const SeenDialog seen =
      answer_next_dialog(Gtk::RESPONSE_OK, [&] { EXPECT_FALSE(DataParams(data.dir).is_valid()); });
  EXPECT_EQ("Error occurred", seen.title.raw());
  EXPECT_EQ("Data file error: " + data.dir +
                "data-parameters.csv line 3 has 1 columns rather than 2",
            seen.text.raw());
  EXPECT_EQ(Gtk::MESSAGE_WARNING, seen.message_type);
}

TEST(DataDialogs, ShowThePathLiterally)
{
  const DataSet data;
  write_file(data.dir + "fish & <b>chips/data-parameters.csv", "parameter,value\nb\n");
  const SeenDialog seen = answer_next_dialog(
      Gtk::RESPONSE_OK, [&] { DataParams params(data.dir + "fish & <b>chips/"); });
  EXPECT_NE(std::string::npos, seen.text.raw().find("fish & <b>chips/data-parameters.csv"))
      << seen.text;
}

TEST(DataDialogs, AskForANewerProgramForMetadataOfAnotherVersion)
{
  const DataSet data;
  data.file("data-file-info.txt", "version=<2>\ntimestamp=1\nupdated=x\n");
  const SeenDialog seen =
      answer_next_dialog(Gtk::RESPONSE_OK, [&] { EXPECT_TRUE(DataFileInfo(data.dir).valid); });
  EXPECT_EQ("Can't handle data file metadata version <2> - please download a newer version of "
            "this program!",
            seen.text.raw());
}

TEST(DataDialogs, NameTheFileThatIsTooLarge)
{
  const DataSet data;
  std::string rows = "parameter,value\n";
  const std::string row = std::string(1000, 'a') + ",1\n";
  while (rows.size() <= largest_data_file)
    rows += row;
  data.file("data-parameters.csv", rows);
  const SeenDialog seen =
      answer_next_dialog(Gtk::RESPONSE_OK, [&] { EXPECT_FALSE(DataParams(data.dir).is_valid()); });
  EXPECT_EQ("Data file error: " + data.dir + "data-parameters.csv has more than 33554432 bytes",
            seen.text.raw());
}

// The file is sparse: it ends in a line of 1 TiB of zero bytes that take no space on the disk.
TEST(DataDialogs, NameTheLineThatIsTooLong)
{
  const DataSet data;
  data.file("data-parameters.csv", "parameter,value\n");
  std::filesystem::resize_file(data.dir + "data-parameters.csv", std::uintmax_t{1} << 40);
  const SeenDialog seen =
      answer_next_dialog(Gtk::RESPONSE_OK, [&] { EXPECT_FALSE(DataParams(data.dir).is_valid()); });
  EXPECT_EQ("Data file error: " + data.dir +
                "data-parameters.csv line 2 has more than 1048576 bytes",
            seen.text.raw());
}

TEST(DataDialogs, NameMetadataThatAreTooLarge)
{
  const DataSet data;
  data.file("data-file-info.txt", "timestamp=1\nupdated=x\n");
  std::filesystem::resize_file(data.dir + "data-file-info.txt", std::uintmax_t{1} << 40);
  const SeenDialog seen =
      answer_next_dialog(Gtk::RESPONSE_OK, [&] { EXPECT_FALSE(DataFileInfo(data.dir).valid); });
  EXPECT_EQ("Data file error: " + data.dir + "data-file-info.txt has too many bytes",
            seen.text.raw());
}
