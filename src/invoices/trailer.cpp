// The file trailer (TR 99): it repeats the header's identification and declares how many
// records of each detail type the file holds. Any failure makes the run stop with 8.
#include "component/shared/datas.hpp"
#include "component/shared/texto.hpp"
#include "invoices/verificacoes.hpp"

namespace quorv::notas {
namespace {

using texto::Apara;
using texto::Campo;
using texto::Coluna;

// Version 1.
constexpr Coluna kMunicipio{32, 3};
constexpr Coluna kNomeMunicipio{35, 25};
// Version 2.
constexpr Coluna kCodigoFonte{11, 14};
constexpr Coluna kNomeInformante{25, 33};
constexpr Coluna kTipoFonte{58, 2};
// Both versions.
constexpr Coluna kNumeroRemessa{60, 6};
constexpr Coluna kDataRemessa{66, 8};
constexpr Coluna kVersao{74, 10};

// The declared counts of TR 10, 15, 20, 25, 30 and 35 and their warning codes.
struct Quantidade {
  Coluna coluna;
  int32_t codigo;
  double Contagem::*lidos;
};
constexpr Quantidade kQuantidades[] = {
    {{84, 8}, 168, &Contagem::tr10},  {{92, 8}, 169, &Contagem::tr15},
    {{100, 8}, 170, &Contagem::tr20}, {{108, 8}, 171, &Contagem::tr25},
    {{116, 8}, 172, &Contagem::tr30}, {{124, 8}, 173, &Contagem::tr35}};

bool Difere(std::string_view cabecalho, std::string_view registro, Coluna coluna) {
  return Campo(cabecalho, coluna) != Campo(registro, coluna);
}

void VerificaNumeroRemessa(Ocorrencias& ocorrencias, std::string_view cabecalho,
                           std::string_view registro) {
  const std::string_view campo = Campo(registro, kNumeroRemessa);
  const auto numero = texto::Numero(campo);
  if (Apara(campo).size() != 6 || !numero || *numero <= 0 ||
      Difere(cabecalho, registro, kNumeroRemessa)) {
    ocorrencias.Falha(93);
  }
}

void VerificaDataRemessa(Ocorrencias& ocorrencias, std::string_view cabecalho,
                         std::string_view registro) {
  const std::string_view campo = Campo(registro, kDataRemessa);
  const auto data = datas::DataDaMascara(campo);
  if (Apara(campo).size() != 8 || !data || *data < *datas::Serial(2000, 1, 1) ||
      Difere(cabecalho, registro, kDataRemessa)) {
    ocorrencias.Falha(68);
  }
}

void VerificaQuantidades(Ocorrencias& ocorrencias, const Contagem& lidos,
                         std::string_view registro) {
  for (const Quantidade& quantidade : kQuantidades) {
    const std::string_view campo = Campo(registro, quantidade.coluna);
    const auto declarado = texto::Numero(campo);
    if (texto::EmBranco(campo) || Apara(campo).size() != 8 || !declarado || *declarado < 0 ||
        *declarado != lidos.*quantidade.lidos) {
      ocorrencias.Falha(quantidade.codigo);
    }
  }
}

void VerificaVersao(Ocorrencias& ocorrencias, std::string_view cabecalho, std::string_view registro,
                    std::string_view versao) {
  if (Apara(Campo(registro, kVersao)) != versao || Difere(cabecalho, registro, kVersao)) {
    ocorrencias.Falha(71);
  }
}

}  // namespace

int16_t VerificaTrailerV1(ExecucaoNotas& execucao, std::string_view cabecalho,
                          std::string_view registro) {
  Ocorrencias ocorrencias(execucao);

  const std::string_view municipio = Campo(registro, kMunicipio);
  const auto codigo = texto::Numero(municipio);
  if (Apara(municipio).size() != 3 || !codigo || *codigo < 1 || *codigo > 500 ||
      Difere(cabecalho, registro, kMunicipio)) {
    ocorrencias.Falha(104);
  }

  if (texto::EmBranco(Campo(registro, kNomeMunicipio)) ||
      Difere(cabecalho, registro, kNomeMunicipio)) {
    ocorrencias.Falha(103);
  }

  VerificaNumeroRemessa(ocorrencias, cabecalho, registro);
  VerificaDataRemessa(ocorrencias, cabecalho, registro);
  VerificaVersao(ocorrencias, cabecalho, registro, "1.0");
  VerificaQuantidades(ocorrencias, execucao.ContagemArquivo(), registro);
  return ocorrencias.Status();
}

int16_t VerificaTrailerV2(ExecucaoNotas& execucao, std::string_view cabecalho,
                          std::string_view registro) {
  Ocorrencias ocorrencias(execucao);

  const std::string_view tipoFonte = Campo(registro, kTipoFonte);
  if (texto::EmBranco(tipoFonte) || !texto::EhNumerico(tipoFonte) ||
      Difere(cabecalho, registro, kTipoFonte)) {
    ocorrencias.Falha(194);
  }

  // A source code that differs from the header's is told with the municipality code's
  // warning, 104, as the treasury's systems have always received it.
  const std::string_view codigoFonte = Campo(registro, kCodigoFonte);
  if (texto::EmBranco(codigoFonte) || !texto::EhNumerico(codigoFonte)) {
    ocorrencias.Falha(193);
  } else if (Difere(cabecalho, registro, kCodigoFonte)) {
    ocorrencias.Falha(104);
  }

  if (texto::EmBranco(Campo(registro, kNomeInformante)) ||
      Difere(cabecalho, registro, kNomeInformante)) {
    ocorrencias.Falha(196);
  }

  VerificaNumeroRemessa(ocorrencias, cabecalho, registro);
  VerificaDataRemessa(ocorrencias, cabecalho, registro);
  VerificaQuantidades(ocorrencias, execucao.ContagemArquivo(), registro);
  VerificaVersao(ocorrencias, cabecalho, registro, "2.0");
  return ocorrencias.Status();
}

}  // namespace quorv::notas
