// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/desk/pdf_file.h"

#include <dlfcn.h>

#include "platform/pdf_maker.h"

namespace tavlo::cli {
namespace {

Outcome Missing() {
  const char* reason = dlerror();
  return Outcome::Failed(reason != nullptr ? reason : kPdfModule);
}

}  // namespace

Outcome MakePdfFile(const PaperDocument& document, std::string& pdf) {
  // It stays loaded: the toolkit in it does not bear to be unloaded.
  void* module = dlopen(kPdfModule, RTLD_NOW | RTLD_LOCAL);
  if (module == nullptr) return Missing();
  const auto make = reinterpret_cast<PdfMaker>(dlsym(module, kPdfMakerName));
  if (make == nullptr) return Missing();
  Outcome outcome;
  make(document, pdf, outcome);
  return outcome;
}

}  // namespace tavlo::cli
