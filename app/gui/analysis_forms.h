#pragma once
// The forms of "H. Harvest", "I. Contribution" and "D. Boot. match". Their fields answer the
// command's dialogues: the main button hands the answers, by dialogue title, to calculate, which
// runs the command.
#include <QWidget>
#include <functional>
#include <map>
#include <string>

#include "run/run_context.h"

class QLineEdit;

namespace korvan::gui {

using FormAnswers = std::map<std::string, std::string>;
using Calculate = std::function<void(const FormAnswers&)>;

// Each form registers its result fields under their control names (txtOptimalHarvestRate, ...)
// so that the command's status texts reach them (the console holds them by guarded pointers).
using RegisterField = std::function<void(const std::string&, QLineEdit*)>;

QWidget* HarvestForm(QWidget* parent, const Session& S, Calculate calculate, RegisterField add);
QWidget* ContributionForm(QWidget* parent, const Session& S, Calculate calculate, RegisterField add);
// Form2 of the matching: A1, A2 choose the two files, A3 to A6 are fields, A7 runs (the files
// are read and checked then; the run's own questions, and B at its end, come as dialogues).
QWidget* MatchForm(QWidget* parent, Calculate calculate, RegisterField add);

}  // namespace korvan::gui
