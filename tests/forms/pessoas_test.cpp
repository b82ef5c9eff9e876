// The name records of persons (TR 121 after a holder, TR 126 after a participant, TR 131 after a
// legal representative): one check, compared with the person record stored last.
#include <string>
#include <tuple>

#include "teste_fichas.hpp"

namespace quorv::teste {
namespace {

class NomePessoaFichas
    : public TesteFichas,
      public ::testing::WithParamInterface<std::tuple<const char*, CasoRegistro>> {};

TEST_P(NomePessoaFichas, CamposDoNome) {
  ConfereRegistro(std::get<0>(GetParam()), std::get<1>(GetParam()));
}

// Columns of TR 121, 126 and 131 (the person records share the identification's columns).
constexpr int kSolicitacao = 12;
constexpr int kCodigoPrefeitura = 22;
constexpr int kCodigoEstadual = 30;
constexpr int kTipo = 38;
constexpr int kCPF = 39;
constexpr int kCNPJ = 50;
constexpr int kNome = 64;

INSTANTIATE_TEST_SUITE_P(
    ExecucaoFichas, NomePessoaFichas,
    ::testing::Combine(
        ::testing::Values("121", "126", "131"),
        ::testing::Values(
            CasoRegistro{"Valido", {}, {}},
            CasoRegistro{"OutraSolicitacao", {{kSolicitacao, 10, "0000000002"}}, {12}},
            // The city hall's code, examined in remittances and returns only.
            CasoRegistro{
                "PrefeituraComLetraREM", {{kCodigoPrefeitura, 8, "0000001A"}}, {94}, "REM"},
            CasoRegistro{
                "PrefeituraComLetraRET", {{kCodigoPrefeitura, 8, "0000001A"}}, {94}, "RET"},
            CasoRegistro{"PrefeituraComLetraOrigemMinuscula",
                         {{kCodigoPrefeitura, 8, "0000001A"}},
                         {94},
                         "ret"},
            CasoRegistro{"PrefeituraComLetraSemOrigem", {{kCodigoPrefeitura, 8, "0000001A"}}, {}},
            CasoRegistro{
                "PrefeituraComLetraOutraOrigem", {{kCodigoPrefeitura, 8, "0000001A"}}, {}, "WEB"},
            // The origin is upper-cased but not trimmed.
            CasoRegistro{"PrefeituraComLetraOrigemComBrancos",
                         {{kCodigoPrefeitura, 8, "0000001A"}},
                         {},
                         " REM"},
            CasoRegistro{"PrefeituraEmBrancoREM", {{kCodigoPrefeitura, 8, ""}}, {94}, "REM"},
            CasoRegistro{
                "PrefeituraNegativaRET", {{kCodigoPrefeitura, 8, "-0000001"}}, {94}, "RET"},
            CasoRegistro{"PrefeituraZeradaREM", {{kCodigoPrefeitura, 8, "00000000"}}, {}, "REM"},
            CasoRegistro{
                "PrefeituraComBrancosEmVoltaREM", {{kCodigoPrefeitura, 8, "   12   "}}, {}, "REM"},
            // The person's code in the state's registry.
            CasoRegistro{"EstadualDiferente", {{kCodigoEstadual, 8, "00001235"}}, {95}},
            CasoRegistro{"EstadualSemZeros", {{kCodigoEstadual, 8, "1234"}}, {}},
            CasoRegistro{"EstadualComBrancos", {{kCodigoEstadual, 8, "  1234  "}}, {}},
            // Read by its leading number: what follows the digits does not count.
            CasoRegistro{"EstadualComLetraDepois", {{kCodigoEstadual, 8, "1234X"}}, {}},
            // Person type, as written.
            CasoRegistro{"TipoMinusculo", {{kTipo, 1, "f"}}, {96}},
            CasoRegistro{"TipoEmBranco", {{kTipo, 1, ""}}, {96}},
            CasoRegistro{"TipoDaPessoaMinusculo", {}, {96}, "", {{kTipo, 1, "f"}}},
            // CPF and CNPJ, compared as numbers.
            CasoRegistro{"CPFDiferente", {{kCPF, 11, "12345678908"}}, {97}},
            CasoRegistro{"CPFEmBrancoNosDois", {{kCPF, 11, ""}}, {}, "", {{kCPF, 11, ""}}},
            CasoRegistro{"CPFEmBrancoSoNoNome", {{kCPF, 11, ""}}, {97}},
            CasoRegistro{"CPFComZerosEBrancos",
                         {{kCPF, 11, " 12345678  "}},
                         {},
                         "",
                         {{kCPF, 11, "00012345678"}}},
            CasoRegistro{
                "CPFComLetraDepois", {{kCPF, 11, "123456789X"}}, {}, "", {{kCPF, 11, "123456789"}}},
            CasoRegistro{"CNPJDiferente", {{kCNPJ, 14, "11222333000181"}}, {98}},
            CasoRegistro{"CNPJEmBrancoNosDois", {{kCNPJ, 14, ""}}, {}, "", {{kCNPJ, 14, ""}}},
            CasoRegistro{"CNPJComZerosEBrancos",
                         {{kCNPJ, 14, "  222333000181"}},
                         {},
                         "",
                         {{kCNPJ, 14, "00222333000181"}}},
            // Name.
            CasoRegistro{"NomeEmBranco", {{kNome, 46, ""}}, {108}},
            CasoRegistro{"TudoErrado",
                         {{kSolicitacao, 10, "0000000002"},
                          {kCodigoPrefeitura, 8, "ABCDEFGH"},
                          {kCodigoEstadual, 8, "00009999"},
                          {kTipo, 1, "J"},
                          {kCPF, 11, "99999999999"},
                          {kCNPJ, 14, "99999999999999"},
                          {kNome, 46, ""}},
                         {12, 94, 95, 96, 97, 98, 108},
                         "REM"})),
    [](const ::testing::TestParamInfo<std::tuple<const char*, CasoRegistro>>& info) {
      return std::string("TR") + std::get<0>(info.param) + "_" + std::get<1>(info.param).nome;
    });

class NomePessoaParaOSistemaWeb : public TesteFichas,
                                  public ::testing::WithParamInterface<const char*> {};

TEST_P(NomePessoaParaOSistemaWeb, NenhumaAdvertenciaDeCampo) {
  const CasoRegistro tudoErrado{"TudoErrado",
                                {{kSolicitacao, 10, "0000000002"},
                                 {kCodigoPrefeitura, 8, "ABCDEFGH"},
                                 {kCodigoEstadual, 8, "00009999"},
                                 {kTipo, 1, "J"},
                                 {kCPF, 11, "99999999999"},
                                 {kCNPJ, 14, "99999999999999"},
                                 {kNome, 46, ""}},
                                {},
                                "REM"};
  ConfereRegistro(GetParam(), tudoErrado, "  TARNWEB  ");
}

INSTANTIATE_TEST_SUITE_P(ExecucaoFichas, NomePessoaParaOSistemaWeb,
                         ::testing::Values("121", "126", "131"));

TEST_F(TesteFichas, NomeComparaComAUltimaPessoaGuardada) {
  arquivo.Cabecalho();
  arquivo.TR100();
  arquivo.TR110();
  arquivo.Pessoa("130").Campo(kCodigoEstadual, 8, "00001111");
  arquivo.TR140();
  arquivo.Pessoa("145").Campo(kCodigoEstadual, 8, "00002222");
  arquivo.DaSolicitacao("146");
  arquivo.NomePessoa("131").Campo(kCodigoEstadual, 8, "00001111");
  arquivo.DaSolicitacao("199");
  arquivo.Trailer();
  EXPECT_EQ(Valida(), 8);
  // The owner (TR 145) was stored after the legal representative.
  EXPECT_EQ(Gravadas(), Esperado({{95, 8}, {125, 3}}));
}

TEST_F(TesteFichas, ParticipanteRecusadoNaoTomaOLugarDoAnterior) {
  arquivo.Cabecalho();
  arquivo.TR100();
  arquivo.TR110();
  arquivo.Pessoa("125").Campo(kCodigoEstadual, 8, "00001111");
  arquivo.Pessoa("125").Campo(kCodigoEstadual, 8, "00002222");
  arquivo.NomePessoa("126").Campo(kCodigoEstadual, 8, "00001111");
  arquivo.DaSolicitacao("199");
  arquivo.Trailer();
  EXPECT_EQ(Valida(), 8);
  EXPECT_EQ(Gravadas(), Esperado({{22, 5}, {125, 3}}));
}

TEST_F(TesteFichas, TitularSemNomeAnteriorTomaOLugarDoAnterior) {
  arquivo.Cabecalho();
  arquivo.TR100();
  arquivo.TR110();
  arquivo.Pessoa("120").Campo(kCodigoEstadual, 8, "00001111");
  arquivo.Pessoa("120").Campo(kCodigoEstadual, 8, "00002222");
  arquivo.NomePessoa("121").Campo(kCodigoEstadual, 8, "00002222");
  arquivo.DaSolicitacao("199");
  arquivo.Trailer();
  EXPECT_EQ(Valida(), 8);
  // The second holder is taken (its name record matches it) and the request is not rejected:
  // the warning for the first holder does not refuse the second.
  EXPECT_EQ(Gravadas(), Esperado({{18, 5}}));
}

TEST_F(TesteFichas, NomeDeTitularSemEstabelecimentoComparaComAPessoaAnterior) {
  arquivo.Cabecalho();
  arquivo.TR100();
  arquivo.TR110();
  arquivo.Pessoa("120").Campo(kCodigoEstadual, 8, "00001111");
  arquivo.NomePessoa("121").Campo(kCodigoEstadual, 8, "00001111");
  arquivo.DaSolicitacao("199");
  arquivo.TR100("0000000002");
  // Refused for want of an establishment, this holder is not stored; its name record still
  // follows a holder and is compared with the person stored before.
  arquivo.Pessoa("120").Campo(kCodigoEstadual, 8, "00002222");
  arquivo.NomePessoa("121").Campo(kCodigoEstadual, 8, "00002222");
  arquivo.DaSolicitacao("199");
  arquivo.Trailer();
  EXPECT_EQ(Valida(), 8);
  // The second request has no establishment line of its own: the notice carries the first's.
  EXPECT_EQ(Gravadas(), Esperado({{999, 8}, {95, 9}, {125, 3}}));
}

}  // namespace
}  // namespace quorv::teste
