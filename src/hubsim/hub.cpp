// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/hub.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "hubsim/machine/drive_commands.h"
#include "hubsim/machine/faults.h"

namespace tavlo::hubsim {
namespace {

constexpr double kDownloadSilence = 0.9;
constexpr double kStatusPeriod = 0.1;
constexpr double kMillisecond = 0.001;
/// A reset asks ten times and wants ten answers, though the first one did it.
constexpr int kResetRequests = 10;
constexpr std::size_t kPassthroughLine = 256;
constexpr std::string_view kBackToHub = "0HM";
/// What the drive terminal answers to a greeting, without a carriage return.
constexpr std::string_view kGreetingAnswer = "00";
constexpr std::string_view kKeys = "0123456789.+-\r\bABCD";
constexpr int kMostEvents = 1000;

bool IsAxis(int axis) {
  return axis >= 0 && axis < kAxisCount;
}

std::string TwoBytes(std::uint16_t value) {
  return {static_cast<char>(value >> 8), static_cast<char>(value & 0xFF)};
}

}  // namespace

Hub::Hub(HubOptions options)
    : options_(std::move(options)),
      bay_(options_, memory_),
      reporter_(outbox_, options_.failure),
      display_(reporter_),
      runner_(memory_, bay_, reporter_, display_, options_.firmware),
      clock_(options_.speedup) {
  SetFailure(options_.failure);
  if (options_.greet) Greet();
}

void Hub::SetTime(double now) {
  clock_.StartAt(now);
  now_ = std::exchange(timed_, true) ? std::max(now_, now) : now;
}

double Hub::ProgramNow() const {
  return clock_.ToProgram(now_);
}

void Hub::SetFailure(const FailurePlan& plan) {
  options_.failure = plan;
  wire_faults_.Start(plan);
  reporter_.CountAnew();
  if (unplugged_) return;
  if (plan.mode == Failure::UnplugTx) {
    outbox_.LimitTo(plan.at);
  } else {
    outbox_.Unlimit();
  }
}

void Hub::Receive(std::string_view bytes, double now) {
  Advance(now);
  for (const char byte : bytes) {
    if (unplugged_) return;
    if (const auto passed = wire_faults_.Pass(static_cast<std::uint8_t>(byte))) {
      last_byte_ = now_;
      TakeByte(*passed);
    }
    if (wire_faults_.CableComesOff()) Unplug();
    CheckCable();
  }
}

std::optional<double> Hub::NextEvent() const {
  std::optional<double> next = outbox_.NextEvent();
  const auto consider = [&next](double when) { next = next ? std::min(*next, when) : when; };
  if (download_) consider(last_byte_ + kDownloadSilence);
  if (runner_.Paused()) consider(next_status_);
  if (GoesOnUnasked()) consider(next_unasked_);
  if (const auto when = runner_.NextEvent()) consider(clock_.ToWall(*when));
  return next;
}

void Hub::Advance(double now) {
  SetTime(now);
  const double until = now_;
  for (int event = 0; event < kMostEvents; ++event) {
    const auto next = NextEvent();
    if (!next || *next > until) {
      Pass(until);
      break;
    }
    RunDue(*next);
  }
  CheckCable();
}

/// Does what is due at `when`, which is what `NextEvent` gave. The program is handed its own event's time,
/// for a time that went through the wall clock and back may miss it by a rounding.
void Hub::RunDue(double when) {
  Pass(when);
  if (download_ && last_byte_ + kDownloadSilence <= when) download_.reset();
  if (runner_.Paused() && next_status_ <= when) {
    next_status_ = std::max(next_status_ + kStatusPeriod, now_ - kStatusPeriod);
    runner_.ReportAllStatus();
  }
  if (GoesOnUnasked() && next_unasked_ <= when) {
    next_unasked_ = when + options_.failure.at * kMillisecond;
    runner_.Acknowledge(clock_.ToProgram(when));
  }
  const auto program_event = runner_.NextEvent();
  if (program_event && clock_.ToWall(*program_event) <= when) runner_.Advance(*program_event);
}

/// A line that begins to wait for its acknowledgement after `when` cannot have gone on before.
void Hub::Pass(double when) {
  outbox_.Advance(when);
  if (!GoesOnUnasked()) next_unasked_ = std::max(next_unasked_, when);
}

bool Hub::GoesOnUnasked() const {
  return options_.failure.mode == Failure::Hasty && runner_.Waits() == WaitsFor::Acknowledge;
}

std::string Hub::TakeOutput() {
  return outbox_.Take();
}

void Hub::CheckCable() {
  if (outbox_.Exhausted()) Unplug();
}

bool Hub::Unplug() {
  if (unplugged_) return false;
  unplugged_ = true;
  outbox_.LimitTo(0);
  return true;
}

bool Hub::Replug() {
  if (!unplugged_) return false;
  const Failure mode = options_.failure.mode;
  unplugged_ = false;
  outbox_.Clear();
  outbox_.Unlimit();
  if (mode == Failure::Unplug || mode == Failure::UnplugTx) SetFailure({});
  return true;
}

bool Hub::Say(std::string_view bytes) {
  if (unplugged_) return false;
  outbox_.Put(bytes);
  return true;
}

void Hub::TakeByte(std::uint8_t byte) {
  if (download_) return TakeDownloadByte(byte);
  const char character = static_cast<char>(byte);
  if (passthrough_) return TakePassthroughByte(character);
  if (zeros_taken_ < kGreetingAnswer.size() && TakeGreetingAnswer(character)) return;
  if (std::exchange(star_, false) && character == '0') return;
  if (character != 'R') resets_left_ = 0;
  if (IsKey(character)) return runner_.PressKey(character, ProgramNow());
  TakeCommand(character);
}

/// The "0" is both a digit and the command that goes to the first line: it is a digit where digits are asked
/// for.
bool Hub::IsKey(char byte) const {
  if (!TerminalRun() || kKeys.find(byte) == std::string_view::npos) return false;
  const WaitsFor waits = runner_.Waits();
  return byte != '0' || waits == WaitsFor::Value || waits == WaitsFor::MenuKey;
}

/// A drive terminal that is open while the hub restarts still believes in its passthrough and says so.
void Hub::Greet() {
  reporter_.Greeting(options_.firmware, static_cast<std::uint8_t>(options_.model));
  zeros_taken_ = 0;
}

bool Hub::TakeGreetingAnswer(char byte) {
  if (byte != '0') {
    zeros_taken_ = kGreetingAnswer.size();
    return false;
  }
  if (++zeros_taken_ == kGreetingAnswer.size()) OpenPassthrough();
  return true;
}

void Hub::OpenPassthrough() {
  passthrough_ = true;
  passthrough_line_.clear();
}

void Hub::TakeCommand(char command) {
  switch (command) {
    case 'C': Answer(Reply::Identity, Identity()); break;
    case 'D': Answer(Reply::Drives, bay_.DriveList()); break;
    case 'R': AnswerRevisionsOrReset(); break;
    case 'F': StartDownload(); break;
    case 'K':
      if (sum_) Answer(Reply::Sum, TwoBytes(*sum_));
      break;
    case 'U': Answer(Reply::Upload, Upload()); break;
    case 'E': Answer(Reply::Execute, ReadHubSettings(memory_).uses_terminal ? "M" : "X"); break;
    case 'H': OpenPassthrough(); break;
    case '*': star_ = true; break;
    default: TakeRunCommand(command);
  }
}

void Hub::TakeRunCommand(char command) {
  switch (command) {
    case 'X': runner_.Start(false, ProgramNow()); break;
    case 'M': runner_.Start(true, ProgramNow()); break;
    case 'S': runner_.Stop(ProgramNow()); break;
    case 'P':
      if (!runner_.Paused()) next_status_ = now_;
      runner_.Pause(ProgramNow());
      break;
    case 'r': runner_.Resume(ProgramNow()); break;
    case 'T': runner_.Step(ProgramNow()); break;
    case '0': runner_.Rewind(ProgramNow()); break;
    case 'I': runner_.Acknowledge(ProgramNow()); break;
    default: break;
  }
}

void Hub::Answer(Reply reply, std::string bytes, std::int64_t index) {
  SpoiledReply spoiled = SpoilReply(options_.failure, reply, index, std::move(bytes));
  if (spoiled.delay_s > 0) {
    outbox_.PutAt(std::move(spoiled.bytes), now_ + spoiled.delay_s);
  } else {
    outbox_.Put(spoiled.bytes);
  }
}

void Hub::StartDownload() {
  runner_.Stop(ProgramNow());
  sum_.reset();
  download_.emplace(memory_, options_.firmware);
  Answer(Reply::Start, "Y");
}

void Hub::TakeDownloadByte(std::uint8_t byte) {
  const auto acknowledge = download_->Take(byte);
  if (acknowledge) Answer(acknowledge->reply, "Y", acknowledge->index);
  if (!download_->Complete()) return;
  sum_ = download_->Sum();
  download_.reset();
}

/// The drives' commands end in a carriage return; a line feed in front of the next one belongs to none.
void Hub::TakePassthroughByte(char byte) {
  if (byte == '\n') return;
  if (byte != '\r') {
    if (passthrough_line_.size() < kPassthroughLine) passthrough_line_ += byte;
    return;
  }
  std::string_view line = passthrough_line_;
  while (line.starts_with(kGreetingAnswer)) line.remove_prefix(kGreetingAnswer.size());
  if (line == kBackToHub) passthrough_ = false;
  outbox_.Put(AnswerDriveCommand(line, bay_, runner_.GetMachine(), ProgramNow()));
  passthrough_line_.clear();
}

void Hub::AnswerRevisionsOrReset() {
  if (runner_.State() == RunState::Halted) {
    runner_.Reset(ProgramNow());
    resets_left_ = kResetRequests;
  }
  if (resets_left_ == 0) return Answer(Reply::Revisions, bay_.Revisions());
  --resets_left_;
  Answer(Reply::Reset, "Y");
}

std::string Hub::Identity() const {
  return {static_cast<char>(options_.firmware), static_cast<char>(options_.model)};
}

std::string Hub::Upload() const {
  const MemoryView image = memory_.Bytes();
  return std::string(image.begin(), image.end()) + TwoBytes(memory_.Sum());
}

bool Hub::SetInput(int axis, int input, bool high, double now) {
  if (!IsAxis(axis) || input < 0 || input >= kInputCount) return false;
  Advance(now);
  runner_.SetInput(axis, input, high, ProgramNow());
  return true;
}

bool Hub::TurnKnob(int axis, int counts, double now) {
  if (!IsAxis(axis) || std::abs(counts) > kMostKnobCounts) return false;
  Advance(now);
  return runner_.TurnKnob(axis, counts, ProgramNow());
}

bool Hub::HitLimit(int axis, double now) {
  if (!IsAxis(axis)) return false;
  Advance(now);
  return runner_.HitLimit(axis, ProgramNow());
}

bool Hub::Fail(int axis, int code, double now) {
  if (!IsAxis(axis) || code < 0 || code >= kFaultCodes) return false;
  Advance(now);
  return runner_.Fail(axis, code, ProgramNow());
}

bool Hub::PressStop(double now) {
  Advance(now);
  return runner_.PressStop(ProgramNow());
}

void Hub::PowerUp(double now) {
  Advance(now);
  runner_.PowerUp(ProgramNow());
  outbox_.Clear();
  download_.reset();
  sum_.reset();
  passthrough_ = false;
  star_ = false;
  resets_left_ = 0;
  Greet();
}

HubState Hub::State() const {
  if (download_) return HubState::Downloading;
  if (passthrough_) return HubState::Passthrough;
  switch (runner_.State()) {
    case RunState::Idle: break;
    case RunState::Running: return runner_.Paused() ? HubState::Paused : HubState::Running;
    case RunState::Ended: return HubState::Ended;
    case RunState::Halted: return HubState::Halted;
  }
  return HubState::Idle;
}

AxisView Hub::Axis(int axis) const {
  if (!IsAxis(axis)) return {};
  const Machine& machine = runner_.GetMachine();
  const double now = ProgramNow();
  AxisView view;
  view.position_steps = machine.At(axis).Position(now);
  view.speed_steps_s = machine.At(axis).Speed(now);
  view.steps_per_rev = machine.Settings(axis).steps_per_rev;
  view.moving = !machine.At(axis).Idle();
  if (machine.At(axis).Seeking()) view.seeking = machine.At(axis).Order().line;
  view.motor_on = machine.MotorOn(axis);
  view.amps = machine.Amps(axis);
  view.inputs = machine.Io().MainInputs(axis);
  view.x_inputs = machine.Io().XInputs(axis);
  view.outputs = machine.Io().Outputs(axis);
  return view;
}

std::vector<SpeedPoint> Hub::Course(int axis, double until) const {
  if (!IsAxis(axis)) return {};
  auto points = runner_.GetMachine().At(axis).Course(ProgramNow(), clock_.ToProgram(until));
  for (SpeedPoint& point : points) point.time = clock_.ToWall(point.time);
  return points;
}

}  // namespace tavlo::hubsim
