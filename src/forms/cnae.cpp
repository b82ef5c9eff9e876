// An economic activity of the establishment (TR 115): its CNAE Fiscal code, dates and billing
// order.
#include "component/shared/texto.hpp"
#include "forms/verificacoes.hpp"

namespace quorv::fichas {

bool Valida_Campos_CNAE(ExecucaoFichas& execucao, std::string_view registro) {
  using texto::Campo;
  using texto::InteiroOuMenosUm;
  Ocorrencias ocorrencias(execucao);
  VerificaNumeroSolicitacao(ocorrencias, execucao, registro);
  // Any code above zero is taken: no table of codes is consulted.
  ocorrencias.Se(InteiroOuMenosUm(Campo(registro, colunas::tr115::kCNAE)) <= 0, 92);
  VerificaDatas(ocorrencias, execucao, registro, kDatasCNAE);
  const int32_t ordem = InteiroOuMenosUm(Campo(registro, colunas::tr115::kOrdemFaturamento));
  ocorrencias.Se(ordem < 0 || ordem > 3, 93);
  return ocorrencias.Aceito();
}

}  // namespace quorv::fichas
