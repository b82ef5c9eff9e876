// The file header (TR 00). Every problem of the header is fatal: the run stops after the check
// has recorded all of them.
#include "component/shared/datas.hpp"
#include "component/shared/texto.hpp"
#include "invoices/verificacoes.hpp"

namespace quorv::notas {
namespace {

using texto::Campo;
using texto::Coluna;

// Version-1 header.
constexpr Coluna kMunicipio{32, 3};
constexpr Coluna kNomeMunicipio{35, 25};
constexpr Coluna kNumeroRemessa{60, 6};
constexpr Coluna kDataRemessa{66, 8};
constexpr Coluna kVersao{74, 10};
constexpr Coluna kIndicador{84, 1};

// Version-2 header.
constexpr Coluna kCodigoFonte{11, 14};
constexpr Coluna kNomeInformante{25, 33};
constexpr Coluna kTipoFonte{58, 2};

}  // namespace

DadosCabecalho LeCabecalho(int versao, std::string_view registro) {
  DadosCabecalho dados;
  dados.versao = versao;
  dados.linha.assign(registro);
  if (versao == 1) {
    dados.tipoFonte = 1;
    dados.verificaPrefixo = true;
    dados.prefixoEsperado.assign(Campo(registro, kMunicipio));
    return dados;
  }
  dados.tipoFonte = texto::NumeroOuMenosUm(Campo(registro, kTipoFonte));
  dados.codigoFonte = texto::Numero(Campo(registro, kCodigoFonte));
  if (dados.tipoFonte == 1) {
    // A source of type 1 names its municipality in the whole 14-character code field.
    dados.verificaPrefixo = true;
    dados.prefixoEsperado.assign(Campo(registro, kCodigoFonte));
  }
  if (dados.tipoFonte == 6) dados.emitenteEsperado = dados.codigoFonte;
  return dados;
}

int16_t VerificaCabecalhoV1(ExecucaoNotas& execucao, std::string_view registro) {
  Ocorrencias ocorrencias(execucao);

  const auto municipio = texto::Numero(Campo(registro, kMunicipio));
  if (!municipio || *municipio < 1 || *municipio > 500) ocorrencias.Falha(104);

  if (texto::EmBranco(Campo(registro, kNomeMunicipio))) ocorrencias.Falha(103);

  const auto remessa = texto::Numero(Campo(registro, kNumeroRemessa));
  if (!remessa || *remessa <= 0) ocorrencias.Falha(93);

  const auto data = datas::DataDaMascara(Campo(registro, kDataRemessa));
  if (!data || *data < *datas::Serial(2000, 1, 1)) ocorrencias.Falha(68);

  if (texto::Apara(Campo(registro, kVersao)) != "1.0") ocorrencias.Falha(71);

  const std::string_view indicador = Campo(registro, kIndicador);
  if (indicador != " " && indicador != "T") ocorrencias.Falha(70);

  return ocorrencias.Status();
}

// The version-2 header is held to the tests that its trailer applies to the same identification
// fields: source type, source code, informant name, remessa number and date, and the version.
int16_t VerificaCabecalhoV2(ExecucaoNotas& execucao, std::string_view registro,
                            std::string_view linha) {
  // The run hands the same line as the record and as the raw line; the fields are read from the
  // record.
  static_cast<void>(linha);
  Ocorrencias ocorrencias(execucao);

  if (!texto::EhNumerico(Campo(registro, kTipoFonte))) ocorrencias.Falha(194);

  const std::string_view codigoFonte = Campo(registro, kCodigoFonte);
  if (texto::EmBranco(codigoFonte) || !texto::EhNumerico(codigoFonte)) {
    ocorrencias.Falha(193);
  }

  if (texto::EmBranco(Campo(registro, kNomeInformante))) ocorrencias.Falha(196);

  const std::string_view numeroRemessa = Campo(registro, kNumeroRemessa);
  const auto remessa = texto::Numero(numeroRemessa);
  if (texto::Apara(numeroRemessa).size() != 6 || !remessa || *remessa <= 0) ocorrencias.Falha(93);

  const std::string_view dataRemessa = Campo(registro, kDataRemessa);
  const auto data = datas::DataDaMascara(dataRemessa);
  if (texto::Apara(dataRemessa).size() != 8 || !data || *data < *datas::Serial(2000, 1, 1)) {
    ocorrencias.Falha(68);
  }

  if (texto::Apara(Campo(registro, kVersao)) != "2.0") ocorrencias.Falha(71);

  return ocorrencias.Status();
}

}  // namespace quorv::notas
