#pragma once
// Cohorts written straight into the store for the engine's tests, and dialogues answered
// from a list.
#include <cmath>
#include <deque>
#include <string>
#include <vector>

#include "store/session_store.h"
#include "ui/prompt_service.h"

namespace korvan::test {

struct Member {
  std::string sex;                 // "F", "M" or "N"
  std::vector<double> durations;   // the last one negative for "N"
  std::vector<double> fecundity;   // daily eggs of a female, without the closing -1
};

// Stage names "S1".."S<m-1>", then "Female" / "Male" for the adult stage.
inline void LoadCohort(SessionStore& S, int m, const std::vector<Member>& members) {
  auto& H = S.header;
  auto& C = S.ws.cohort;
  H.StageCount = m;
  H.TypeCount = 2;
  H.TypeCode(1) = "F";
  H.TypeCode(2) = "M";
  for (int j = 1; j < m; ++j) {
    H.StageName(1, j) = "S" + std::to_string(j);
    H.StageName(2, j) = "S" + std::to_string(j);
  }
  H.StageName(1, m) = "Female";
  H.StageName(2, m) = "Male";
  H.StageName(1, m + 1) = "Male";
  H.SpecialGroup(1) = "S1";
  H.SpecialGroup(2) = m > 1 ? H.StageName(1, m - 1) : "S1";
  H.RegularLifeTable = "Yes";
  const int n = static_cast<int>(members.size());
  C.CohortSize = n;
  H.CohortSizeRead = n;
  C.MaxLongevity = 0;
  for (int i = 1; i <= n; ++i) {
    const Member& mb = members[static_cast<std::size_t>(i - 1)];
    C.IndividualNo(i) = i;
    C.IndividualSex(i) = mb.sex;
    for (int j = 1; j <= m; ++j) C.StageDuration(i, j) = 0;
    double life = 0;
    for (std::size_t j = 0; j < mb.durations.size(); ++j) {
      C.StageDuration(i, static_cast<long>(j + 1)) = mb.durations[j];
      life += std::fabs(mb.durations[j]);
    }
    if (mb.sex == "F") {
      const int d = static_cast<int>(C.StageDuration(i, m));
      for (int x = 1; x <= d; ++x)
        C.Fecundity(i, x) = x <= static_cast<int>(mb.fecundity.size()) ? mb.fecundity[static_cast<std::size_t>(x - 1)] : 0;
      C.Fecundity(i, d + 1) = -1;
    }
    C.TotalLongevity(i) = static_cast<int>(life);
    if (C.TotalLongevity(i) > C.MaxLongevity) C.MaxLongevity = C.TotalLongevity(i);
  }
}

// Answers message boxes and input boxes in order; when none is left, the default.
class ListPrompts : public PromptService {
 public:
  std::deque<std::string> answers;  // "Yes", "No", "OK", "Cancel" or the text of an input box
  std::vector<std::string> titles;  // every dialogue met
  std::vector<std::string> texts;
  std::vector<std::pair<std::string, std::string>> status;

  int MsgBox(const std::string& text, const std::string& title, int buttons, int defaultButton) override {
    titles.push_back(title);
    texts.push_back(text);
    std::string a;
    if (!answers.empty()) {
      a = answers.front();
      answers.pop_front();
    }
    if (a == "Yes") return kYes;
    if (a == "No") return kNo;
    if (a == "Cancel") return kCancel;
    if (a == "OK") return kOK;
    if (buttons == kYesNo || buttons == kYesNoCancel) return defaultButton == 2 ? kNo : kYes;
    return kOK;
  }
  std::string InputBox(const std::string& text, const std::string& title, const std::string& def) override {
    titles.push_back(title);
    texts.push_back(text);
    if (answers.empty()) return def;
    std::string a = answers.front();
    answers.pop_front();
    return a;
  }
  std::string ChooseFile(const std::string& title) override {
    titles.push_back(title);
    return "";
  }
  void Status(const std::string& label, const std::string& text) override {
    status.emplace_back(label, text);
  }
};

}  // namespace korvan::test
