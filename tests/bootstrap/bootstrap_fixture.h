#pragma once
// Helpers of the bootstrap tests: a pool written by hand, prompts that answer from a list,
// a generator that returns given values.
#include <deque>
#include <memory>
#include <string>
#include <vector>

#include "bootstrap/uniform_random.h"
#include "store/session_store.h"
#include "text/numbers.h"
#include "ui/prompt_service.h"
#include <stdexcept>

namespace korvan::boottest {

// Answers by title; a dialogue with no answer left fails the test through an exception.
class ListPrompts : public PromptService {
 public:
  void Answer(const std::string& title, const std::string& answer) { answers_.push_back({title, answer}); }
  int MsgBox(const std::string& text, const std::string& title, int, int) override;
  std::string InputBox(const std::string& text, const std::string& title, const std::string& def) override;
  std::string ChooseFile(const std::string& title) override;
  std::vector<std::string> titles;  // every dialogue met, in order
  std::vector<std::string> texts;

 private:
  std::string Take(const std::string& title);
  std::deque<std::pair<std::string, std::string>> answers_;
};

// Returns the values given, in turn; SeedSample is noted and changes nothing.
class ListGenerator : public UniformGenerator {
 public:
  explicit ListGenerator(std::vector<double> u) : u_(std::move(u)) {}
  void SeedSample(std::uint64_t, std::int64_t sample) override { seeded.push_back(sample); }
  double Next() override;
  std::size_t used() const { return next_; }
  std::vector<std::int64_t> seeded;

 private:
  std::vector<double> u_;
  std::size_t next_ = 0;
};

// One individual of a hand-made pool: sex, durations (the last negative for a death), and the
// daily eggs of a female (without the closing -1).
struct PoolIndividual {
  std::string sex;
  std::vector<double> durations;
  std::vector<double> eggs;
};


// A store with m stages and the given pool, ready for drawing samples of size n (MakePoolStore),
// and a life-table data file of the same individuals (DataFileText).


inline std::string ListPrompts::Take(const std::string& title) {
  titles.push_back(title);
  for (auto it = answers_.begin(); it != answers_.end(); ++it) {
    if (it->first == title) {
      std::string a = it->second;
      answers_.erase(it);
      return a;
    }
  }
  throw std::runtime_error("no answer for dialogue \"" + title + "\"");
}

inline int ListPrompts::MsgBox(const std::string& text, const std::string& title, int, int) {
  texts.push_back(text);
  const std::string a = Take(title);
  if (a == "Yes") return kYes;
  if (a == "No") return kNo;
  if (a == "Cancel") return kCancel;
  return kOK;
}

inline std::string ListPrompts::InputBox(const std::string& text, const std::string& title, const std::string&) {
  texts.push_back(text);
  return Take(title);
}

inline std::string ListPrompts::ChooseFile(const std::string& title) { return Take(title); }

inline double ListGenerator::Next() {
  if (next_ >= u_.size()) throw std::runtime_error("the list of u ran out");
  return u_[next_++];
}

inline std::unique_ptr<SessionStore> MakePoolStore(int m, const std::vector<PoolIndividual>& pool, int n) {
  auto S = std::make_unique<SessionStore>();
  S->header.StageCount = m;
  S->header.CohortSizeRead = static_cast<int>(pool.size());
  S->pool.OriginalCohortSize = static_cast<int>(pool.size());
  for (std::size_t k = 0; k < pool.size(); ++k) {
    const long i = static_cast<long>(k) + 1;
    const PoolIndividual& p = pool[k];
    S->pool.OriginalSex(i) = p.sex;
    for (std::size_t j = 0; j < p.durations.size(); ++j) S->pool.OriginalStageDuration(i, static_cast<long>(j) + 1) = p.durations[j];
    if (p.sex == "F") {
      const int d = static_cast<int>(p.durations.back());
      double total = 0;
      for (int day = 1; day <= d; ++day) {
        const double e = day <= static_cast<int>(p.eggs.size()) ? p.eggs[static_cast<std::size_t>(day - 1)] : 0;
        S->pool.OriginalFecundity(i, day) = e;
        total += e;
      }
      S->pool.OriginalFecundity(i, d + 1) = -1;
      S->pool.OriginalTotalFecundity(i) = total;
    }
  }
  S->boot.BootSampleSize = n;
  S->boot.BootB = 1;
  S->options.MatingMode = "Yes";
  S->boot.EffectiveOnly = "Yes";
  S->boot.SameBootstrap = "No";
  return S;
}

inline std::string DataFileText(int m, const std::vector<PoolIndividual>& pool) {
  std::string t = "\"Project: Test\"\n\"Tester\"\n\"Control\"\n" + std::to_string(pool.size()) + "\n2," +
                  std::to_string(m) + "\n";
  std::string f = "F", mm = "M";
  for (int j = 1; j < m; ++j) {
    f += ",S" + std::to_string(j);
    mm += ",S" + std::to_string(j);
  }
  t += f + ",Female\n" + mm + ",Male\n";
  t += m > 1 ? "S1,Female\n" : "Female,Female\n";
  for (std::size_t k = 0; k < pool.size(); ++k) {
    const PoolIndividual& p = pool[k];
    t += std::to_string(k + 1) + "," + p.sex;
    for (double d : p.durations) t += "," + FullPrecision(d);
    t += "\n";
    if (p.sex == "F") {
      for (double e : p.eggs) t += FullPrecision(e) + ",";
      t += "-1\n";
    }
  }
  return t;
}

}  // namespace korvan::boottest
