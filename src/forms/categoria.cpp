// The establishment's category (TR 111).
#include "component/shared/texto.hpp"
#include "forms/verificacoes.hpp"

namespace quorv::fichas {

bool Valida_Campos_Categoria(ExecucaoFichas& execucao, std::string_view registro) {
  Ocorrencias ocorrencias(execucao);
  VerificaNumeroSolicitacao(ocorrencias, execucao, registro);
  ocorrencias.Se(texto::InteiroOuMenosUm(texto::Campo(registro, colunas::tr111::kCategoria)) < 1,
                 89);
  VerificaDatas(ocorrencias, execucao, registro, kDatasCategoria);
  return ocorrencias.Aceito();
}

}  // namespace quorv::fichas
