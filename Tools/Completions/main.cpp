// quillon-completions: prints the completion scripts of `quillon` for bash,
// zsh and fish, and its manual page, from the grammar the tool parses with.
// Usage: quillon-completions bash|zsh|fish|man [OUTPUT]
// Without OUTPUT the text goes to standard output. Exits 1 on a bad command
// line, a manual example the tool refuses or a write that failed.
#include <cstdio>
#include <fstream>
#include <iostream>
#include <string>
#include <string_view>

#include "Tools/Completions/BashScript.h"
#include "Tools/Completions/CompletionModel.h"
#include "Tools/Completions/FishScript.h"
#include "Tools/Completions/ManPage.h"
#include "Tools/Completions/ZshScript.h"

#ifndef QUILLON_VERSION
#define QUILLON_VERSION ""
#endif

int main(int argc, char** argv) {
  using namespace corvel;
  const std::string_view usage = "Usage: quillon-completions bash|zsh|fish|man [OUTPUT]\n";
  if (argc < 2 || argc > 3) {
    std::cerr << usage;
    return 1;
  }
  const auto model = CompletionModel::make();
  const std::string_view what = argv[1];
  std::string text;
  if (what == "bash") {
    text = BashScript::text(model);
  } else if (what == "zsh") {
    text = ZshScript::text(model);
  } else if (what == "fish") {
    text = FishScript::text(model);
  } else if (what == "man") {
    auto page = ManPage::text(QUILLON_VERSION);
    if (!page) {
      std::cerr << "quillon-completions: " << page.error() << "\n";
      return 1;
    }
    text = std::move(*page);
  } else {
    std::cerr << usage;
    return 1;
  }
  if (argc == 2) {
    std::cout << text;
    return std::cout.flush() ? 0 : 1;
  }
  std::ofstream file(argv[2], std::ios::binary | std::ios::trunc);
  file << text;
  file.close();
  if (!file) {
    std::cerr << "quillon-completions: could not write " << argv[2] << "\n";
    return 1;
  }
  return 0;
}
