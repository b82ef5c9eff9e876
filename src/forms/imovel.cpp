// A property the establishment uses (TR 140).
#include "component/shared/texto.hpp"
#include "forms/verificacoes.hpp"

namespace quorv::fichas {

bool Valida_Campos_Imovel(ExecucaoFichas& execucao, std::string_view registro) {
  using texto::Campo;
  using texto::InteiroOuMenosUm;
  namespace tr140 = colunas::tr140;
  Ocorrencias ocorrencias(execucao);
  VerificaNumeroSolicitacao(ocorrencias, execucao, registro);

  const int32_t municipio = InteiroOuMenosUm(Campo(registro, tr140::kMunicipio));
  ocorrencias.Se(municipio > 500 || municipio < 1, 56);
  ocorrencias.Se(InteiroOuMenosUm(Campo(registro, tr140::kZona)) < 1, 110);
  ocorrencias.Se(InteiroOuMenosUm(Campo(registro, tr140::kMatricula)) < 1, 111);

  const int32_t area = InteiroOuMenosUm(Campo(registro, tr140::kArea));
  const int32_t areaUtilizada = InteiroOuMenosUm(Campo(registro, tr140::kAreaUtilizada));
  ocorrencias.Se(area < 1, 83);
  ocorrencias.Se(areaUtilizada < 1, 112);
  // More area in use than the property has is an error of the area: one record can thus carry
  // warning 83 twice.
  ocorrencias.Se(areaUtilizada > area, 83);

  VerificaDatas(ocorrencias, execucao, registro, kDatasImovel);
  // A property without owners is accepted.
  ocorrencias.Se(InteiroOuMenosUm(Campo(registro, tr140::kQuantidadeProprietarios)) < 0, 113);
  return ocorrencias.Aceito();
}

}  // namespace quorv::fichas
