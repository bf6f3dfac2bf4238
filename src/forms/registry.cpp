// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/registry.h"

#include <algorithm>
#include <array>

#include "forms/feed_length.h"
#include "forms/go_to_box.h"
#include "forms/wait_time.h"

namespace tavlo {
namespace {

template <class Which>
std::unique_ptr<Form> Make() {
  return std::make_unique<Which>();
}

constexpr FormRow kFeedLength = {"FeedLength", "Feed to Length", "FL.pdf", Make<FeedLength>};
constexpr FormRow kWaitTime = {"WaitTime", "Wait Time", "WT.pdf", Make<WaitTime>};
constexpr FormRow kGoToBox = {"GoToBox", "Go To", "GT.pdf", Make<GoToBox>};

struct KindForm {
  int type;
  const FormRow& form;
};
constexpr std::array kForms = {
    KindForm{FL, kFeedLength},
    KindForm{FLCS, kFeedLength},
    KindForm{WT, kWaitTime},
    KindForm{GT, kGoToBox},
};

}  // namespace

const FormRow* FormOf(int type) {
  const auto* const found = std::ranges::find(kForms, type, &KindForm::type);
  return found == kForms.end() ? nullptr : &found->form;
}

}  // namespace tavlo
