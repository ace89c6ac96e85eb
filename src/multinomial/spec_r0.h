#pragma once
// The bootstrap life tables of one R0 in a record no. 11 (the analysis called A5): which
// samples give it, their multinomial coefficients, the different compositions among them, and
// the expected count of the R0 set against the observed one.
#include <string>
#include <vector>

#include "run/run_context.h"

namespace korvan {

class MncForSpecR0 : public Procedures {
 public:
  using Procedures::Procedures;

  void CalculateMNCforSpecRo();
  // The finite-rate route: nothing yet.
  void CalculateMNCforSpecLambda();
  // Reads a record and, sample by sample as the user names them, the MNC of each.
  void CalculateMNCforSpecBootSample();
  void CalculateMNCforSpecBootSampleA();

  // The R0 asked for, the sample asked for, and the base of the result names.
  double SpecR0 = 0;
  long SpecSample = 0;
  std::string ResultBase;

  // Samples of the R0 (CalculateMNC01), their compositions (CalculateMNC01a), their MNC
  // (CalculateMNC02) and the different ones among them (CalculateMNC02A); the report
  // (CalculateMNC03).
  void CalculateMNC01();
  void CalculateMNC01a();
  void CalculateMNC02();
  void CalculateMNC02A();
  void CalculateMNC03();

  // Results of the passes.
  std::vector<long> Picked;     // samples of the R0, in sample order, then by composition
  std::vector<long> Different;  // first sample of each different composition among them
  std::vector<long> Repeats;    // its count of samples
  long DifferentR0 = 0, DifferentLambda = 0;
  double SumMNC = 0, SumMNCOfR0 = 0;  // C over all samples, D over the different life tables
};

}  // namespace korvan
