// Field tests shared by the records of a request: the request number, and the entry and exit
// dates of categories, activities and properties.
#include "component/shared/datas.hpp"
#include "component/shared/texto.hpp"
#include "forms/verificacoes.hpp"
#include "quorvvalida/validacao_ficha_cadastral.hpp"

namespace quorv::fichas {
namespace {

// Day 2 of the date serials: 1900-01-01.
constexpr double kPrimeiroDia = 2;

// The entry date's tests, in order; true at the first that fails.
bool EntradaInvalida(double entrada, double inicioAtividade, double fimAtividade, double hoje) {
  // Not a date, or zeros: every record that has an entry date must give one.
  if (entrada <= 0) return true;
  if (entrada < kPrimeiroDia) return true;
  if (entrada > hoje) return true;
  // Before the activity began; an activity start that is not a date reads -1 and lets any date
  // pass.
  if (entrada < inicioAtividade) return true;
  // After the activity ended, when it has ended.
  return fimAtividade > 0 && entrada > fimAtividade;
}

// The exit date's tests, in order; true at the first that fails.
bool SaidaInvalida(double saida, double entrada, double hoje, bool saidaAteHoje) {
  // Not a date: a blank exit date falls here, since only zeros say "not left".
  if (saida < 0) return true;
  if (saida == 0) return false;
  if (saida < kPrimeiroDia) return true;
  if (saidaAteHoje && saida > hoje) return true;
  // An entry date that is no date (-1) or zeros is never later than an exit date that got here,
  // so only a real entry date is compared, whatever the entry date's own group found.
  return saida < entrada;
}

}  // namespace

void VerificaNumeroSolicitacao(Ocorrencias& ocorrencias, const ExecucaoFichas& execucao,
                               std::string_view registro) {
  const double numero = texto::ValorInicial(texto::Campo(registro, colunas::kNumeroSolicitacao));
  ocorrencias.Se(numero != texto::ValorInicial(execucao.Dono().sNro_Solicitacao), 12);
}

void VerificaDatas(Ocorrencias& ocorrencias, ExecucaoFichas& execucao, std::string_view registro,
                   const RegraDatas& regra) {
  const ValidacaoFichaCadastral& dono = execucao.Dono();
  const double entrada = datas::ConverteData(texto::Campo(registro, regra.entrada));
  const double saida = datas::ConverteData(texto::Campo(registro, regra.saida));
  ocorrencias.Se(EntradaInvalida(entrada, datas::ConverteData(dono.Dt_Inicio_Atividade),
                                 datas::ConverteData(dono.Dt_Fim_Atividade), execucao.Hoje()),
                 90);
  ocorrencias.Se(SaidaInvalida(saida, entrada, execucao.Hoje(), regra.saidaAteHoje), 91);
}

}  // namespace quorv::fichas
