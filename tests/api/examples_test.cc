// The examples, run as a reader of the README runs them.

#include <gtest/gtest.h>

#include <cstdio>
#include <iostream>
#include <string>

#include "tests/support/compound_file_writer.h"
#include "tests/support/encrypted_package_writer.h"
#include "tests/support/source_files.h"

namespace fi {
namespace {

// What the example prints for arguments that need no quoting.
std::string RunExample(const std::string& name, const std::string& arguments) {
  const std::string command = FORMATID_EXAMPLES "/formatid_example_" + name + ' ' + arguments;
  std::FILE* output = ::popen(command.c_str(), "r");
  if (output == nullptr) return "not run";
  std::string text;
  for (int c = std::fgetc(output); c != EOF; c = std::fgetc(output)) text += static_cast<char>(c);
  ::pclose(output);
  return text;
}

TEST(Examples, GatewayDecidesOnRanges) {
  const testing::TemporaryFolder folder;
  const std::string picture("GIF89a\1\0\1\0\0\0\0;", 14);
  std::string lines;
  while (lines.size() < 1'000'000) lines += "a line of prose\n";
  const struct {
    testing::SourceFile file;
    const char* verdict;
  } cases[] = {
      {{"picture.gif", picture}, "pass: 1503 "},
      {{"letter.doc", picture}, "hold: misnamed: 1503 "},
      {{"program", std::string("\x7F"
                               "ELF\2\1\1",
                               7) +
                       std::string(60, '\0')},
       "refuse: 3000 "},
      {{"long.txt", lines}, "pass: 4005 "},
  };
  for (const auto& each : cases) {
    const std::string said = RunExample("gateway", folder.Write(each.file).string());
    EXPECT_TRUE(said.starts_with(each.verdict)) << each.file.name << ": " << said;
    std::cout << each.file.name << ": " << said;
    unsigned long long got = 0;
    unsigned long long size = 0;
    const size_t counts = said.rfind('(');
    ASSERT_NE(counts, std::string::npos);
    ASSERT_EQ(std::sscanf(said.c_str() + counts, "(%llu of %llu", &got, &size), 2);
    EXPECT_EQ(size, each.file.bytes.size());
    EXPECT_LE(got, 200'000u) << "the rest of the file was not needed";
  }
}

TEST(Examples, FolderScanCounts) {
  const testing::TemporaryFolder folder;
  folder.Write({"one.gif", "GIF89a"});
  const std::string path = folder.Write({"two.gif", "GIF89a"}).parent_path().string();
  EXPECT_EQ(RunExample("folder_scan", path), "     2  Graphics Interchange Format (GIF)\n");
}

TEST(Examples, PasswordRelay) {
  const testing::TemporaryFolder folder;
  const testing::EncryptedPackage package = testing::WriteAgile("PK", {.spins = 100});
  const std::string document =
      testing::WriteCompoundFile({testing::Stream(u"EncryptionInfo", package.info),
                                  testing::Stream(u"EncryptedPackage", package.package)});
  const std::string path = folder.Write({"closed", document}).string();
  EXPECT_NE(RunExample("password_relay", path).find("password needed"), std::string::npos);
  EXPECT_NE(RunExample("password_relay", path + " wrong").find("no password fits"),
            std::string::npos);
  const std::string opened = RunExample("password_relay", "--explain " + path + " wrong secret");
  EXPECT_NE(opened.find("opened \"EncryptionInfo\""), std::string::npos) << opened;
  EXPECT_TRUE(opened.ends_with(": identified\n")) << opened;
  std::cout << opened;
}

}  // namespace
}  // namespace fi
