#include "analysis_forms.h"

#include <QButtonGroup>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QVBoxLayout>

#include "analyses/harvest.h"
#include "commands/harvest_command.h"
#include "commands/match_commands.h"

namespace korvan::gui {

namespace {

QString Q(const std::string& s) { return QString::fromStdString(s); }

QWidget* FormWindow(QWidget* parent, const char* name, const char* title) {
  auto* form = new QWidget(parent, Qt::Window);
  form->setObjectName(name);
  form->setAttribute(Qt::WA_DeleteOnClose);
  form->setWindowTitle(title);
  return form;
}

QLineEdit* Field(const char* name, const QString& text, const QString& tip = {}) {
  auto* f = new QLineEdit(text);
  f->setObjectName(name);
  if (!tip.isEmpty()) f->setToolTip(tip);
  return f;
}

QLineEdit* Result(const char* name, const RegisterField& add) {
  auto* f = new QLineEdit;
  f->setObjectName(name);
  f->setReadOnly(true);
  add(name, f);
  return f;
}

// A file chooser button: the path chosen is kept in the line beside it.
QPushButton* FileButton(QWidget* form, const char* name, const char* caption, const char* tip, QLineEdit* path) {
  auto* b = new QPushButton(caption);
  b->setObjectName(name);
  b->setToolTip(tip);
  QObject::connect(b, &QPushButton::clicked, form, [form, path, tip] {
    const QString chosen = QFileDialog::getOpenFileName(form, tip, {}, "Text files (*.txt);;All files (*)");
    if (!chosen.isEmpty()) path->setText(chosen);
  });
  return b;
}

}  // namespace

QWidget* HarvestForm(QWidget* parent, const Session& S, Calculate calculate, RegisterField add) {
  namespace t = form_titles;
  QWidget* form = FormWindow(parent, "Harvest", "Harvest");
  auto* layout = new QVBoxLayout(form);
  auto* info = new QLabel(Q(HarvestLifeTableInformation(S)));
  info->setObjectName("lstLifeTable");
  info->setWordWrap(true);
  layout->addWidget(info);

  auto* fields = new QFormLayout;
  const int m = S.header.StageCount;
  auto* stage = new QSpinBox;
  stage->setObjectName("VScroll1");
  stage->setRange(1, m + 1);
  auto* stageName = Field("txtHarvestStage", Q(S.header.StageName(1, 1)));
  stageName->setReadOnly(true);
  QObject::connect(stage, &QSpinBox::valueChanged, stageName,
                   [stageName, &S](int j) { stageName->setText(Q(S.header.StageName(1, j))); });
  auto* stageRow = new QHBoxLayout;
  stageRow->addWidget(stage);
  stageRow->addWidget(stageName, 1);
  fields->addRow("Target stage", stageRow);
  auto* age = Field("txtDiscardAge", QString::number(S.ws.tables.LastAge),
                    "Enter the last age into the pink box.  It is the last age of the life table to be used in "
                    "mass-rearing system. Individuals older than that age will be discarded.");
  age->setStyleSheet("background: pink;");
  fields->addRow(t::kLastHarvestAge, age);
  auto* expect = Field("txtExpectHarvest", "1000");
  fields->addRow(t::kExpectedHarvest, expect);
  auto* cost = Field("txtCost", "0");
  fields->addRow(t::kHarvestCost, cost);
  layout->addLayout(fields);

  // The conservation levels; all but the first read the bootstrap's R0 and SE.
  auto* levels = new QButtonGroup(form);
  auto* levelRow = new QHBoxLayout;
  const char* names[] = {"Option1", "Option2", "Option3", "Option4", "OptSE", "Opt2SE"};
  for (int k = 0; k < 6; ++k) {
    auto* option = new QRadioButton(kConservationLevels[k]);
    option->setObjectName(names[k]);
    option->setChecked(k == 0);
    levels->addButton(option, k);
    levelRow->addWidget(option);
  }
  layout->addLayout(levelRow);
  auto* sePath = Field("SEFile", "");
  sePath->setReadOnly(true);
  auto* readSE = FileButton(form, "Command7", "Read Ro and SE first", t::kSEFile, sePath);
  readSE->setEnabled(false);
  auto* other = Field("txtOtherR0", "2", "Enter the expected R0 after harvest. (R0(h)=?)");
  other->setEnabled(false);
  QObject::connect(levels, &QButtonGroup::idClicked, form, [readSE, other](int k) {
    readSE->setEnabled(k != 0);
    other->setEnabled(k == 3);
  });
  auto* seRow = new QHBoxLayout;
  seRow->addWidget(readSE);
  seRow->addWidget(sePath, 1);
  seRow->addWidget(new QLabel("R0(h)=?"));
  seRow->addWidget(other);
  layout->addLayout(seRow);

  auto* run = new QPushButton("Calculate the sustainable harvest rate (Click and wait)");
  run->setObjectName("Command1");
  QObject::connect(run, &QPushButton::clicked, form, [=] {
    const int k = levels->checkedId();
    FormAnswers a = {{t::kTargetStage, std::to_string(stage->value())},
                     {t::kLastHarvestAge, age->text().toStdString()},
                     {t::kExpectedHarvest, expect->text().toStdString()},
                     {t::kHarvestCost, cost->text().toStdString()},
                     {t::kConservationLevel, kConservationLevels[k]}};
    if (k != 0) a[t::kSEFile] = sePath->text().toStdString();
    if (k == 3) a[t::kOtherR0] = other->text().toStdString();
    calculate(a);
  });
  auto* results = new QFormLayout;
  results->addRow("Sustainable harvest rate", Result("txtOptimalHarvestRate", add));
  results->addRow("Yield", Result("txtYield", add));
  layout->addWidget(run);
  layout->addLayout(results);

  auto* buttons = new QHBoxLayout;
  auto* periodic = new QPushButton("Periodic mass-rearing and harvesting");
  periodic->setObjectName("Command6");
  periodic->setToolTip("The same form: no separate periodic analysis exists");
  auto* back = new QPushButton("Back to main form");
  back->setObjectName("Command3");
  QObject::connect(back, &QPushButton::clicked, form, &QWidget::close);
  buttons->addWidget(periodic);
  buttons->addStretch(1);
  buttons->addWidget(back);
  layout->addLayout(buttons);
  return form;
}

QWidget* ContributionForm(QWidget* parent, const Session& S, Calculate calculate, RegisterField add) {
  namespace t = form_titles;
  QWidget* form = FormWindow(parent, "frmContribution", "Contribution");
  auto* layout = new QVBoxLayout(form);
  auto* text = new QLabel(
      "If the insects produce offspring in multiple ways, you can use this method.\n"
      "1. Read the population parameters of the cohort with all offspring (its \"_ZZ-population parameters.txt\"), "
      "or enter its r and R0.\n"
      "2. Calculate the contribution of the offspring of this life table.\n"
      "The standard errors of the contributions: \"J. Cal. ratio\" on the \"Effect boot A1a-Ro\" files of the two "
      "cohorts, then a paired bootstrap test of the ratio files.");
  text->setWordWrap(true);
  layout->addWidget(text);
  auto* path = Field("PooledFile", "");
  path->setReadOnly(true);
  auto* read = FileButton(form, "Command3", t::kPooledFile, "Read \"_ZZ-population parameters.txt\" of all offspring",
                          path);
  auto* readRow = new QHBoxLayout;
  readRow->addWidget(read);
  readRow->addWidget(path, 1);
  layout->addLayout(readRow);
  auto* fields = new QFormLayout;
  auto* r = Field("txtTotalIntrinsicRate", QString::number(S.params.R_Basic, 'g', 15));
  auto* r0 = Field("txtTotalNetReproductiveRate", QString::number(S.params.R0_Basic, 'g', 15));
  add("txtTotalIntrinsicRate", r);
  add("txtTotalNetReproductiveRate", r0);
  fields->addRow(t::kPooledR, r);
  fields->addRow(t::kPooledR0, r0);
  fields->addRow("Finite rate of all offspring =", Result("txtTotalFiniteRate", add));
  fields->addRow("Mean generation time =", Result("txtTotalMeanGenT", add));
  layout->addLayout(fields);
  auto* run = new QPushButton("2. Calculate contribution of these offspring");
  run->setObjectName("Command1");
  QObject::connect(run, &QPushButton::clicked, form, [=] {
    calculate({{t::kPooledFile, path->text().toStdString()},
               {t::kPooledR, r->text().toStdString()},
               {t::kPooledR0, r0->text().toStdString()}});
  });
  layout->addWidget(run);
  auto* results = new QFormLayout;
  results->addRow("Contribution to r =", Result("txtContributionToR", add));
  results->addRow("Contribution to lambda =", Result("txtContributionToLambda", add));
  results->addRow("Contribution to Ro =", Result("txtContributionToRo", add));
  layout->addLayout(results);
  auto* back = new QPushButton("Back to mainform");
  back->setObjectName("Command2");
  QObject::connect(back, &QPushButton::clicked, form, &QWidget::close);
  layout->addWidget(back);
  return form;
}

QWidget* MatchForm(QWidget* parent, Calculate calculate, RegisterField add) {
  namespace t = match_titles;
  QWidget* form = FormWindow(parent, "Form2", "Bootstrap-random match preadult and adult life tables");
  auto* layout = new QVBoxLayout(form);
  auto* files = new QFormLayout;
  auto fileRow = [&](const char* button, const char* caption, const char* title, const char* count) {
    auto* path = Field(button == std::string("Command3") ? "ImmatureFile" : "AdultFile", "");
    path->setReadOnly(true);
    auto* row = new QHBoxLayout;
    row->addWidget(FileButton(form, button, caption, title, path));
    row->addWidget(path, 1);
    row->addWidget(Result(count, add));
    files->addRow(row);
    return path;
  };
  QLineEdit* immature = fileRow("Command3", "A1. Open immature data", t::kImmatureFile, "lblImmatureNr");
  QLineEdit* adult = fileRow("Command4", "A2. Open adult data", t::kAdultFile, "lblAdultNr");
  layout->addLayout(files);
  auto* boxes = new QFormLayout;
  auto* size = Field("txtSampleSize", "", "Left empty, it is asked with the number of immature individuals");
  auto* boot = Field("txtBootB", "1000");
  auto* winter = Field("txtOverwinterDuration", "0");
  auto* mortality = Field("txtOverwinterMortality", "0", t::kWinterMortalityTip);
  boxes->addRow(t::kSampleSize, size);
  boxes->addRow(t::kBootB, boot);
  boxes->addRow(t::kWinter, winter);
  boxes->addRow(t::kWinterMortality, mortality);
  layout->addLayout(boxes);
  auto* run = new QPushButton("A7. Run random match");
  run->setObjectName("Command7");
  QObject::connect(run, &QPushButton::clicked, form, [=] {
    // A field left empty is asked as a dialogue when the run comes to it.
    FormAnswers a;
    const std::pair<const char*, QLineEdit*> fields[] = {{t::kImmatureFile, immature}, {t::kAdultFile, adult},
                                                         {t::kSampleSize, size},       {t::kBootB, boot},
                                                         {t::kWinter, winter},         {t::kWinterMortality, mortality}};
    for (const auto& [title, field] : fields)
      if (!field->text().trimmed().isEmpty()) a[title] = field->text().toStdString();
    calculate(a);
  });
  layout->addWidget(run);
  layout->addWidget(Result("lblMatchMsg", add));
  layout->addWidget(Result("lblMatchTime", add));
  auto* means = new QFormLayout;
  means->addRow("Mean R0", Result("txtMeanBootR0", add));
  means->addRow("Mean T", Result("txtMeanBootT", add));
  means->addRow("Mean lambda", Result("txtMeanBootLambda", add));
  means->addRow("Mean r", Result("txtMeanBootr", add));
  means->addRow("Mean fecundity", Result("txtMeanBootFecundity", add));
  layout->addLayout(means);
  auto* back = new QPushButton("Go back to the Mainform");
  back->setObjectName("Command6");
  QObject::connect(back, &QPushButton::clicked, form, &QWidget::close);
  layout->addWidget(back);
  return form;
}

}  // namespace korvan::gui
