#pragma once
// "G. Gen. boot": the dialogues of the general bootstrap, its demonstration for B below 10, and
// the multiplication of a list of means into one value per individual ("-new.txt").
#include "run/run_context.h"

namespace korvan {

class GeneralBootstrapCommand : public Procedures {
 public:
  using Procedures::Procedures;
  void cmdGeneralBootstrap_Click();

 private:
  bool AskSerialNumbers();
  void Multiply();
  void Demonstration(long N, long n, long B, bool pause);
  void OfferFrequencySave(const std::vector<double>& values, const std::vector<double>& counts);
};

}  // namespace korvan
