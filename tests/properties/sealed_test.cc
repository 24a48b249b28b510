// Files that other programs seal, made here: how each is encrypted is told apart. A program that is
// not installed leaves its files out.

#include <gtest/gtest.h>
#include <stdlib.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>

#include "formatid/identify.h"
#include "formatid/properties.h"

namespace {

namespace fs = std::filesystem;

// A PDF file of one page with a right cross-reference table.
std::string PlainPdf() {
  std::string file = "%PDF-1.4\n";
  std::string table = "xref\n0 4\n0000000000 65535 f \n";
  for (const char* object :
       {"1 0 obj\n<< /Type /Catalog /Pages 2 0 R >>\nendobj\n",
        "2 0 obj\n<< /Type /Pages /Kids [3 0 R] /Count 1 >>\nendobj\n",
        "3 0 obj\n<< /Type /Page /Parent 2 0 R /MediaBox [0 0 9 9] >>\nendobj\n"}) {
    std::string offset = std::to_string(file.size());
    offset.insert(0, 10 - offset.size(), '0');
    table += offset + " 00000 n \n";
    file += object;
  }
  const std::string start = std::to_string(file.size());
  return file + table + "trailer\n<< /Root 1 0 R /Size 4 >>\nstartxref\n" + start + "\n%%EOF\n";
}

class SealedFiles : public ::testing::Test {
 protected:
  void SetUp() override {
    std::string pattern = fs::temp_directory_path() / "formatid-sealed-XXXXXX";
    ASSERT_NE(::mkdtemp(pattern.data()), nullptr);
    folder_ = pattern;
    Write("plain.pdf", PlainPdf());
    // Enough of it that archivers compress their directories.
    for (int i = 0; i < 12; ++i) {
      Write("part" + std::to_string(i) + ".txt", std::string(200, 'a' + static_cast<char>(i)));
    }
  }

  void TearDown() override {
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
  }

  void Write(const std::string& name, const std::string& bytes) const {
    std::ofstream(folder_ / name, std::ios::binary) << bytes;
  }

  bool Run(const std::string& command) const {
    const std::string line = "cd '" + folder_.string() + "' && (" + command + ") >/dev/null 2>&1";
    return std::system(line.c_str()) == 0;
  }

  bool Has(const std::string& tool) const { return Run("command -v " + tool); }

  // "encryption, scheme, signed" of a file, as far as they are told.
  std::string SealOf(const std::string& name) const {
    const std::string path = folder_ / name;
    FIRequest request = FI_REQUEST_INIT;
    FIResult result = FI_RESULT_INIT;
    FIProperties properties = FI_PROPERTIES_INIT;
    request.source.kind = kFiSourcePath;
    request.source.path = path.c_str();
    request.properties = &properties;
    EXPECT_EQ(FIIdentify(&request, &result), kFiOk) << name;
    std::string seal;
    for (uint32_t i = 0; i < properties.count; ++i) {
      const FIProperty& item = properties.items[i];
      if (std::strcmp(item.name, "signed") == 0) seal += seal.empty() ? "signed" : "; signed";
      if (!std::string(item.name).starts_with("encryption")) continue;
      seal += (seal.empty() ? "" : "; ") + std::string(item.value);
    }
    return seal;
  }

  struct Row {
    const char* command;  // makes the file "out"
    const char* seal;
  };

  template <size_t kRows>
  void Check(const char* tool, const Row (&rows)[kRows], const char* before = "true") const {
    if (!Has(tool)) GTEST_SKIP() << tool << " is not installed";
    ASSERT_TRUE(Run(before)) << before;
    for (const Row& row : rows) {
      SCOPED_TRACE(row.command);
      fs::remove(folder_ / "out");
      ASSERT_TRUE(Run(row.command));
      EXPECT_EQ(SealOf("out"), row.seal);
    }
  }

 private:
  fs::path folder_;
};

TEST_F(SealedFiles, Pdf) {
  Check("qpdf",
        {{"qpdf plain.pdf out", "none"},
         {"qpdf --allow-weak-crypto --encrypt u o 40 -- plain.pdf out", "password; RC4 40-bit"},
         {"qpdf --allow-weak-crypto --encrypt '' o 40 -- plain.pdf out", "restricted; RC4 40-bit"},
         {"qpdf --allow-weak-crypto --encrypt u o 128 --use-aes=n -- plain.pdf out",
          "password; RC4 128-bit"},
         {"qpdf --allow-weak-crypto --encrypt '' o 128 --use-aes=n -- plain.pdf out",
          "restricted; RC4 128-bit"},
         {"qpdf --allow-weak-crypto --encrypt u o 128 --use-aes=y -- plain.pdf out",
          "password; AES-128"},
         {"qpdf --allow-weak-crypto --encrypt '' o 128 --use-aes=y -- plain.pdf out",
          "restricted; AES-128"},
         {"qpdf --encrypt u o 256 -- plain.pdf out", "password; AES-256"},
         {"qpdf --encrypt '' o 256 -- plain.pdf out", "restricted; AES-256"},
         {"qpdf --object-streams=generate --encrypt '' o 256 -- plain.pdf out",
          "restricted; AES-256"}});
}

TEST_F(SealedFiles, ZipClassic) {
  Check("zip", {{"zip -q x.zip part1.txt && mv x.zip out", "none"},
                {"zip -q -P pw y.zip part1.txt && mv y.zip out", "password; ZipCrypto"}});
}

TEST_F(SealedFiles, ZipAndSevenZip) {
  Check("7zz", {{"7zz a -tzip -ppw -mem=ZipCrypto x part* && mv x.* out", "password; ZipCrypto"},
                {"7zz a -tzip -ppw -mem=AES128 x part* && mv x.* out", "password; AES-128"},
                {"7zz a -tzip -ppw -mem=AES256 x part* && mv x.* out", "password; AES-256"},
                {"7zz a -t7z -ppw x part* && mv x.* out", "password; AES-256"},
                {"7zz a -t7z -ppw -mhc=off x part* && mv x.* out", "password; AES-256"},
                {"7zz a -t7z -ppw -mhe=on x part* && mv x.* out", "password; AES-256, headers"},
                {"7zz a -t7z -ppw -m0=bzip2 -ms=off x part* && mv x.* out", "password; AES-256"},
                {"7zz a -t7z x part* && mv x.* out", "none"},
                {"7zz a -t7z -m0=bcj -m1=lzma2 -ms=off x part* && mv x.* out", "none"},
                {"7zz a -t7z -mhc=off x part* && mv x.* out", "none"}});
}

TEST_F(SealedFiles, MessagesAndKeys) {
  Check(
      "openssl",
      {{"openssl smime -encrypt -aes256 -in part1.txt -out out cert.pem", "certificate; S/MIME"},
       {"openssl smime -sign -in part1.txt -out out -signer cert.pem -inkey key.pem",
        "none; signed"},
       {"openssl cms -encrypt -aes256 -in part1.txt -outform DER -out out cert.pem", "certificate"},
       {"openssl cms -sign -nodetach -in part1.txt -outform DER -out out -signer cert.pem "
        "-inkey key.pem",
        "none; signed"},
       {"openssl pkcs12 -export -passout pass:pw -in cert.pem -inkey key.pem -out out", "password"},
       {"openssl pkcs12 -export -passout pass:pw -certpbe NONE -keypbe NONE -in cert.pem "
        "-inkey key.pem -out out",
        "none"},
       {"openssl pkcs8 -topk8 -passout pass:pw -in key.pem -out out", "password"},
       {"openssl rsa -aes256 -traditional -passout pass:pw -in key.pem -out out", "password"},
       {"cp key.pem out", "none"}},
      "openssl req -x509 -newkey rsa:2048 -nodes -subj /CN=a -keyout key.pem -out cert.pem");
}

TEST_F(SealedFiles, OpenPgp) {
  Check("gpg",
        {{"gpg --homedir g --batch --pinentry-mode loopback --passphrase pw -o out -c part1.txt",
          "password"},
         {"gpg --homedir g --batch --pinentry-mode loopback --passphrase pw -a -o out -c part1.txt",
          "password"},
         {"gpg --homedir g --batch --trust-model always -r a@b -o out -e part1.txt", "certificate"},
         {"gpg --homedir g --batch -a --trust-model always -r a@b -o out -e part1.txt",
          "certificate"},
         {"gpg --homedir g --batch -a -o out --clear-sign part1.txt", "none; signed"}},
        "mkdir -m 700 g && gpg --homedir g --batch --passphrase '' --quick-gen-key a@b "
        "future-default");
}

}  // namespace
