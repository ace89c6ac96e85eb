#pragma once
// The 3D life table: offspring sex by the mother's age. A female cohort analysed once per
// offspring type (daughters, sons, infertile offspring) and the male and N-type cohorts each
// leave a matrix file ("_20_..."); read together they give the population's lambda, the weight
// Alpha of each cohort type, the net reproductive rates by type and the stable sex, stage and
// age distributions of the whole population.
#include <string>

#include "run/run_context.h"

namespace korvan {

class ThreeDMatrices : public Procedures {
 public:
  using Procedures::Procedures;

  // The matrix file of the cohort in hand, named by its sexes and its user field: S, g, d of
  // its stages (a male cohort's adult row being its male stage), and for a cohort with females
  // her fecundity and the stable age-stage distribution a(x,j) with a(0,1) = 1.
  void WriteDataFileFor3Dmatrices();

  // The five readers; each asks for its file and ends the program when none is chosen.
  void ReadFMNofFemaleOffspring();
  void ReadFMNofMaleOffspring();
  void ReadFMNofNtypeOffspring();
  void ReadFMNofMale();
  void ReadFMNofNType();
  // Reads the matrix file at path as offspring type or cohort type t: kind 'D' the daughters'
  // file (all of it), 'O' a son or infertile file (its fecundity only), 'C' a male or N-type
  // cohort (S, g, d).
  void ReadMatrixFile(const std::string& path, int t, char kind);

  void ReadChosenMatrixFile(const std::string& title, int t, char kind);

  void CalculateAlpha();
  void CalculateP3DforMandN();
  // "-3D output.txt" with its four tables.
  void Write3DReport();
};

}  // namespace korvan
