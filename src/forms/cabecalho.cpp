// The file header (TR 1). A refused header stops the run.
#include "component/shared/datas.hpp"
#include "component/shared/texto.hpp"
#include "forms/colunas.hpp"
#include "forms/verificacoes.hpp"

namespace quorv::fichas {

bool VerificaCabecalho(ExecucaoFichas& execucao, std::string_view registro) {
  using texto::Campo;
  namespace cabecalho = colunas::cabecalho;
  Ocorrencias ocorrencias(execucao);

  const auto municipio = texto::Numero(Campo(registro, cabecalho::kMunicipio));
  ocorrencias.Se(!municipio || *municipio < 1 || *municipio > 500, 56);

  ocorrencias.Se(texto::EmBranco(Campo(registro, cabecalho::kNomeMunicipio)), 57);

  ocorrencias.Se(!datas::DataDaMascara(Campo(registro, cabecalho::kDataCriacao)), 58);

  const auto remessa = texto::Numero(Campo(registro, cabecalho::kNumeroRemessa));
  ocorrencias.Se(!remessa || *remessa <= 0, 64);

  // The valid versions, indicators and authentication of a header are not published: those
  // fields are not examined.
  return ocorrencias.Aceito();
}

}  // namespace quorv::fichas
