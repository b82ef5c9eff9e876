// The file trailer of both layout versions: identification against the header and the
// declared counts against the records read. Any problem stops the run with 8.
#include <vector>

#include "teste_notas.hpp"

namespace quorv::teste {
namespace {

struct Campo {
  int coluna;
  int largura;
  const char* valor;
};

struct CasoTrailer {
  const char* nome;
  std::vector<Campo> campos;
  std::vector<int> codigos;  // empty: accepted
};

// A file of three notes in one group, each with its item, and a settlement document and a TR 30
// with theirs.
void TresNotas(ArquivoNotas& arquivo) {
  arquivo.TR01();
  for (int i = 0; i < 3; ++i) {
    arquivo.TR10Valido();
    arquivo.Novo("15");
  }
  arquivo.TR20Valido();
  arquivo.Novo("25");
  arquivo.Novo("30");
  arquivo.Novo("35");
  arquivo.TR98();
}

class Trailer : public TesteNotas {
 protected:
  void Verifica(const CasoTrailer& caso) {
    TresNotas(arquivo);
    Registro& trailer = arquivo.TR99();
    for (const Campo& campo : caso.campos)
      trailer.Campo(campo.coluna, campo.largura, campo.valor);
    const int16_t status = Valida();
    if (caso.codigos.empty()) {
      EXPECT_EQ(status, 0);
      EXPECT_FALSE(diretorio.TemAdvertencias());
      return;
    }
    EXPECT_EQ(status, 8);
    Advertencias esperado;
    for (int codigo : caso.codigos)
      esperado.Linha(codigo, trailer.Texto(), "00000014");
    EXPECT_EQ(Gravadas(), esperado.Texto());
  }
};

class TrailerV1 : public Trailer, public ::testing::WithParamInterface<CasoTrailer> {};

TEST_P(TrailerV1, IdentificacaoEQuantidades) {
  arquivo.CabecalhoV1();
  Verifica(GetParam());
}

INSTANTIATE_TEST_SUITE_P(
    Notas, TrailerV1,
    ::testing::Values(CasoTrailer{"Valido", {}, {}},
                      CasoTrailer{"Municipio501", {{32, 3, "501"}}, {104}},
                      CasoTrailer{"MunicipioDiferente", {{32, 3, "124"}}, {104}},
                      CasoTrailer{"MunicipioCurto", {{32, 3, "12"}}, {104}},
                      CasoTrailer{"NomeEmBranco", {{35, 25, ""}}, {103}},
                      CasoTrailer{"NomeDiferente", {{35, 25, "OUTRA CIDADE"}}, {103}},
                      CasoTrailer{"RemessaZero", {{60, 6, "000000"}}, {93}},
                      CasoTrailer{"RemessaCurta", {{60, 6, "1"}}, {93}},
                      CasoTrailer{"RemessaDiferente", {{60, 6, "000002"}}, {93}},
                      CasoTrailer{"Data19991231", {{66, 8, "19991231"}}, {68}},
                      CasoTrailer{"DataInvalida", {{66, 8, "20240230"}}, {68}},
                      CasoTrailer{"DataDiferente", {{66, 8, "20240116"}}, {68}},
                      CasoTrailer{"Versao20", {{74, 10, "2.0"}}, {71}},
                      CasoTrailer{"VersaoComBrancoNaFrente", {{74, 10, " 1.0"}}, {71}},
                      CasoTrailer{"TR10Declarados2", {{84, 8, "00000002"}}, {168}},
                      CasoTrailer{"TR10DeclaradosComBrancos", {{84, 8, "       3"}}, {168}},
                      CasoTrailer{"TR15Diferente", {{92, 8, "00000004"}}, {169}},
                      CasoTrailer{"TR20EmBranco", {{100, 8, ""}}, {170}},
                      CasoTrailer{"TR25Negativo", {{108, 8, "-0000001"}}, {171}},
                      CasoTrailer{"TR30ComLetra", {{116, 8, "0000000A"}}, {172}},
                      CasoTrailer{"TR35Diferente", {{124, 8, "00000000"}}, {173}},
                      CasoTrailer{"TudoErrado",
                                  {{32, 3, "000"},
                                   {35, 25, ""},
                                   {60, 6, "ABCDEF"},
                                   {66, 8, ""},
                                   {74, 10, "9"},
                                   {84, 48, ""}},
                                  {104, 103, 93, 68, 71, 168, 169, 170, 171, 172, 173}}),
    [](const ::testing::TestParamInfo<CasoTrailer>& info) { return info.param.nome; });

class TrailerV2 : public Trailer, public ::testing::WithParamInterface<CasoTrailer> {};

TEST_P(TrailerV2, IdentificacaoEQuantidades) {
  arquivo.CabecalhoV2();
  Verifica(GetParam());
}

INSTANTIATE_TEST_SUITE_P(
    Notas, TrailerV2,
    ::testing::Values(CasoTrailer{"Valido", {}, {}},
                      CasoTrailer{"TipoFonteEmBranco", {{58, 2, ""}}, {194}},
                      CasoTrailer{"TipoFonteComLetra", {{58, 2, "0X"}}, {194}},
                      CasoTrailer{"TipoFonteDiferente", {{58, 2, "03"}}, {194}},
                      CasoTrailer{"CodigoFonteEmBranco", {{11, 14, ""}}, {193}},
                      CasoTrailer{"CodigoFonteComLetra", {{11, 14, "1122233300018X"}}, {193}},
                      CasoTrailer{
                          "CodigoFonteDiferenteDizMunicipio", {{11, 14, "11222333000182"}}, {104}},
                      CasoTrailer{"InformanteEmBranco", {{25, 33, ""}}, {196}},
                      CasoTrailer{"InformanteDiferente", {{25, 33, "OUTRO INFORMANTE"}}, {196}},
                      CasoTrailer{"RemessaDiferente", {{60, 6, "000002"}}, {93}},
                      CasoTrailer{"Data19991231", {{66, 8, "19991231"}}, {68}},
                      CasoTrailer{"TR10Declarados2", {{84, 8, "00000002"}}, {168}},
                      CasoTrailer{"Versao10", {{74, 10, "1.0"}}, {71}},
                      CasoTrailer{"TudoErrado",
                                  {{58, 2, ""},
                                   {11, 14, "00000000000001"},
                                   {25, 33, ""},
                                   {60, 6, "000009"},
                                   {66, 8, "2024"},
                                   {74, 10, "1.0"},
                                   {84, 8, "00000009"}},
                                  {194, 104, 196, 93, 68, 168, 71}}),
    [](const ::testing::TestParamInfo<CasoTrailer>& info) { return info.param.nome; });

}  // namespace
}  // namespace quorv::teste
