#include "commands/curtailed_r_command.h"

#include "ui/chart_figures.h"

namespace korvan {

void CurtailedRCommand::cmdCurtailedR_Click() {
  Flow("cmdCurtailedR_Click");
  P.ShowChart(ShowCurtailedR(S));
}

}  // namespace korvan
