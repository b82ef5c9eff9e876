// The invoice run: line frame, structure rules between records, status and progress.
#include <cmath>
#include <vector>

#include "teste_notas.hpp"

namespace quorv::teste {
namespace {

using ExecucaoNotas = TesteNotas;

// A group with one note and its item, closed.
void GrupoCompleto(ArquivoNotas& arquivo) {
  arquivo.TR01();
  arquivo.TR10Valido();
  arquivo.Novo("15");
  arquivo.TR98();
}

TEST_F(ExecucaoNotas, ArquivoLimpoTerminaEmZeroSemArquivoDeAdvertencias) {
  arquivo.CabecalhoV1();
  GrupoCompleto(arquivo);
  arquivo.TR99();
  EXPECT_EQ(Valida(), 0);
  EXPECT_FALSE(diretorio.TemAdvertencias());
  EXPECT_EQ(numeroRemessa, "000001");
}

TEST_F(ExecucaoNotas, ArquivoLimpoApagaAdvertenciasDeOutraExecucao) {
  GravaBytes(diretorio.Advertencias(), "77#0#0#antiga#00000001\r\n");
  arquivo.CabecalhoV1();
  GrupoCompleto(arquivo);
  arquivo.TR99();
  EXPECT_EQ(Valida(), 0);
  EXPECT_FALSE(diretorio.TemAdvertencias());
}

TEST_F(ExecucaoNotas, SoCabecalhoSemTrailer) {
  const Registro& cabecalho = arquivo.CabecalhoV1();
  EXPECT_EQ(Valida(), 8);
  EXPECT_EQ(Gravadas(), Advertencias().Linha(88, cabecalho.Texto(), "00000001").Texto());
  EXPECT_EQ(numeroRemessa, "000001");
}

TEST_F(ExecucaoNotas, TrailerSemGrupoEncerraSemAdvertencia) {
  arquivo.CabecalhoV1();
  arquivo.TR99();
  EXPECT_EQ(Valida(), 0);
  EXPECT_FALSE(diretorio.TemAdvertencias());
}

TEST_F(ExecucaoNotas, SegundoTrailerPara) {
  arquivo.CabecalhoV1();
  GrupoCompleto(arquivo);
  arquivo.TR99();
  const Registro& segundo = arquivo.TR99();
  arquivo.TR01();
  EXPECT_EQ(Valida(), 8);
  EXPECT_EQ(Gravadas(), Advertencias().Linha(89, segundo.Texto(), "00000007").Texto());
}

TEST_F(ExecucaoNotas, GrupoDepoisDoTrailerPara) {
  arquivo.CabecalhoV1();
  GrupoCompleto(arquivo);
  arquivo.TR99();
  const Registro& abertura = arquivo.TR01();
  arquivo.TR10Valido();
  EXPECT_EQ(Valida(), 8);
  EXPECT_EQ(Gravadas(), Advertencias().Linha(147, abertura.Texto(), "00000007").Texto());
}

TEST_F(ExecucaoNotas, TR15LogoAposTR01ContinuaComStatus1) {
  arquivo.CabecalhoV1();
  arquivo.TR01();
  const Registro& item = arquivo.Novo("15");
  arquivo.TR10Valido();
  arquivo.Novo("15");
  arquivo.TR98();
  arquivo.TR99();
  EXPECT_EQ(Valida(), 1);
  EXPECT_EQ(Gravadas(), Advertencias().Linha(153, item.Texto(), "00000003").Texto());
}

TEST_F(ExecucaoNotas, OrigemA0SoContaOsRegistrosDosGrupos) {
  arquivo.CabecalhoV1();
  arquivo.TR01();
  arquivo.Novo("15");
  arquivo.Novo("20");
  arquivo.Novo("98").Campo(11, 6, "XXXXXX");
  arquivo.Novo("40");
  arquivo.TR99();
  EXPECT_EQ(validacao.Valida_Dados(arquivo.Grava(diretorio), numeroRemessa, diretorio.Texto(), 0, 0,
                                   "A0"),
            0);
  EXPECT_FALSE(diretorio.TemAdvertencias());
}

TEST_F(ExecucaoNotas, OrigemA0AindaVerificaMolduraETrailer) {
  arquivo.CabecalhoV1();
  arquivo.TR01();
  arquivo.Novo("10");
  Registro& trailer = arquivo.TR99();
  trailer.Numero(84, 8, 2);
  EXPECT_EQ(validacao.Valida_Dados(arquivo.Grava(diretorio), numeroRemessa, diretorio.Texto(), 0, 0,
                                   "A0"),
            8);
  EXPECT_EQ(Gravadas(), Advertencias().Linha(168, trailer.Texto(), "00000004").Texto());
}

TEST_F(ExecucaoNotas, OrigemA0AindaRecusaSequenciaErrada) {
  arquivo.CabecalhoV1();
  arquivo.TR01();
  Registro& nota = arquivo.Novo("10");
  nota.Numero(1, 8, 9);
  EXPECT_EQ(validacao.Valida_Dados(arquivo.Grava(diretorio), numeroRemessa, diretorio.Texto(), 0, 0,
                                   "A0"),
            8);
  EXPECT_EQ(Gravadas(), Advertencias().Linha(166, nota.Texto(), "00000003").Texto());
}

// Under origin "A0" a group opening is only counted, even after the trailer; a second trailer is
// still refused.
TEST_F(ExecucaoNotas, OrigemA0DepoisDoTrailer) {
  arquivo.CabecalhoV1();
  GrupoCompleto(arquivo);
  arquivo.TR99();
  arquivo.TR01();
  const std::string soAbertura = arquivo.Grava(diretorio, "abertura.txt");
  const Registro& segundo = arquivo.TR99();
  const std::string comSegundoTrailer = arquivo.Grava(diretorio, "trailer.txt");
  EXPECT_EQ(validacao.Valida_Dados(soAbertura, numeroRemessa, diretorio.Texto(), 0, 0, "A0"), 0);
  EXPECT_FALSE(diretorio.TemAdvertencias());
  EXPECT_EQ(validacao.Valida_Dados(comSegundoTrailer, numeroRemessa, diretorio.Texto(), 0, 0, "A0"),
            8);
  EXPECT_EQ(Gravadas(), Advertencias().Linha(89, segundo.Texto(), "00000008").Texto());
}

TEST_F(ExecucaoNotas, CerquilhaERecusadaQualquerQueSejaOSeparador) {
  arquivo.CabecalhoV1();
  arquivo.TR01();
  Registro& nota = arquivo.Novo("10");
  nota.Campo(40, 3, "A#B");
  const std::string comBranco = Registro(nota).Campo(40, 3, "A B").Texto();
  EXPECT_EQ(validacao.Valida_Dados(arquivo.Grava(diretorio), numeroRemessa, diretorio.Texto(), 0, 0,
                                   "", "", ";"),
            8);
  EXPECT_EQ(Gravadas(), Advertencias(";").Linha(201, comBranco, "00000003").Texto());
}

TEST_F(ExecucaoNotas, CerquilhaNaPrimeiraLinha) {
  Registro& cabecalho = arquivo.CabecalhoV1();
  cabecalho.Campo(100, 1, "#");
  const std::string comBranco = Registro(cabecalho).Campo(100, 1, " ").Texto();
  EXPECT_EQ(Valida(), 8);
  EXPECT_EQ(Gravadas(), Advertencias().Linha(201, comBranco, "00000001").Texto());
}

TEST_F(ExecucaoNotas, LinhaCurtaOuLongaPara) {
  for (const std::size_t largura : {159u, 161u, 100000u}) {
    DiretorioTemporario outro;
    Registro registro(160);
    registro.Numero(1, 8, 3).Campo(9, 2, "10");
    const std::string nota = registro.ComLargura(largura);
    ArquivoNotas linhas;
    linhas.CabecalhoV1();
    linhas.TR01();
    linhas.Bruta(nota);
    // A filler line that the run never reaches keeps the file's length a multiple of 162
    // bytes, so that the length test of the first line passes.
    const std::size_t bytes = 2 * 162 + largura + 2;
    linhas.Bruta(std::string((162 - bytes % 162) % 162 + 160, 'z'));
    std::string numero;
    Validacao v;
    EXPECT_EQ(v.Valida_Dados(linhas.Grava(outro), numero, outro.Texto()), 8) << largura;
    std::string copiada = nota.substr(0, 160);
    copiada.resize(160, ' ');
    EXPECT_EQ(LeBytes(outro.Advertencias()), Advertencias().Linha(77, copiada, "00000003").Texto())
        << largura;
  }
}

// Lines that fill the file up to a whole number of 162-byte lines, so that the length test of
// the first line passes, when the lines so far do not.
void CompletaOTamanho(ArquivoNotas& arquivo, std::size_t bytes) {
  const std::size_t falta = (162 - bytes % 162) % 162;
  if (falta != 0) arquivo.Bruta(std::string((falta + 160) % 162, 'z'));
}

// The rules of a line's frame run in a fixed order (length, sequence, record type, "#", second
// header) and the first that fails stops the run; the length is told with the line's own number,
// the others with the line counter. Origin "A0" keeps the same frame.
struct CasoMoldura {
  const char* nome;
  std::size_t largura;  // of the third line
  int sequencia;        // in its columns 1-8; the counter is at 3
  const char* tipo;
  bool cerquilha;  // a "#" in column 40
  int codigo;
  const char* numero;
};

class MolduraDaLinha : public TesteNotas, public ::testing::WithParamInterface<CasoMoldura> {};

TEST_P(MolduraDaLinha, SoAPrimeiraRegraQueFalha) {
  const CasoMoldura& caso = GetParam();
  arquivo.CabecalhoV1();
  arquivo.TR01();
  Registro terceira(160);
  terceira.Numero(1, 8, caso.sequencia).Campo(9, 2, caso.tipo);
  if (caso.cerquilha) terceira.Campo(40, 1, "#");
  arquivo.Bruta(terceira.ComLargura(caso.largura));
  CompletaOTamanho(arquivo, 2 * 162 + caso.largura + 2);
  // The warning copies the line cut or padded with blanks to 160 characters, each "#" a blank.
  Registro copiada = terceira;
  copiada.Campo(40, 1, "");
  const std::string esperado =
      Advertencias().Linha(caso.codigo, copiada.Texto(), caso.numero).Texto();
  const std::string caminho = arquivo.Grava(diretorio);
  for (const char* origem : {"", "A0"}) {
    DiretorioTemporario outro;
    std::string numero;
    Validacao v;
    EXPECT_EQ(v.Valida_Dados(caminho, numero, outro.Texto(), 0, 0, origem), 8) << origem;
    EXPECT_EQ(LeBytes(outro.Advertencias()), esperado) << origem;
  }
}

INSTANTIATE_TEST_SUITE_P(
    ExecucaoNotas, MolduraDaLinha,
    ::testing::Values(
        CasoMoldura{"Curta", 159, 3, "10", false, 77, "00000003"},
        CasoMoldura{"CurtaComTudoErrado", 159, 9, "00", true, 77, "00000009"},
        CasoMoldura{"SequenciaETipoErrados", 160, 9, "77", true, 166, "00000003"},
        CasoMoldura{"TipoDesconhecidoComCerquilha", 160, 3, "77", true, 78, "00000003"},
        CasoMoldura{"SegundoCabecalhoComCerquilha", 160, 3, "00", true, 201, "00000003"},
        CasoMoldura{"CerquilhaNaNota", 160, 3, "10", true, 201, "00000003"},
        CasoMoldura{"SegundoCabecalho", 160, 3, "00", false, 87, "00000003"}),
    [](const ::testing::TestParamInfo<CasoMoldura>& info) { return info.param.nome; });

// The first line: length, "#", the file's length, sequence, header type and version, in this
// order; the length and the "#" are told with the line's own number, the others with the counter.
struct CasoPrimeiraLinha {
  const char* nome;
  std::size_t largura;
  int sequencia;
  const char* tipo;
  const char* versao;
  bool cerquilha;       // a "#" in column 100
  bool arquivoInteiro;  // the file's length a whole number of 162-byte lines
  int codigo;
  const char* numero;
};

class MolduraDaPrimeiraLinha : public TesteNotas,
                               public ::testing::WithParamInterface<CasoPrimeiraLinha> {};

TEST_P(MolduraDaPrimeiraLinha, SoAPrimeiraRegraQueFalha) {
  const CasoPrimeiraLinha& caso = GetParam();
  ArquivoNotas modelo;
  Registro primeira = modelo.CabecalhoV1();
  primeira.Numero(1, 8, caso.sequencia).Campo(9, 2, caso.tipo).Campo(74, 10, caso.versao);
  if (caso.cerquilha) primeira.Campo(100, 1, "#");
  arquivo.Bruta(primeira.ComLargura(caso.largura));
  if (caso.arquivoInteiro) {
    CompletaOTamanho(arquivo, caso.largura + 2);
  } else {
    arquivo.Bruta(std::string(caso.largura == 160 ? 1 : 160, 'z'));
  }
  Registro copiada = primeira;
  copiada.Campo(100, 1, "");
  EXPECT_EQ(Valida(), 8);
  EXPECT_EQ(Gravadas(), Advertencias().Linha(caso.codigo, copiada.Texto(), caso.numero).Texto());
  EXPECT_EQ(numeroRemessa, "");
}

INSTANTIATE_TEST_SUITE_P(
    ExecucaoNotas, MolduraDaPrimeiraLinha,
    ::testing::Values(
        CasoPrimeiraLinha{"CurtaComTudoErrado", 159, 5, "01", "3.0", true, false, 77, "00000005"},
        CasoPrimeiraLinha{"CerquilhaComTudoErrado", 160, 5, "01", "3.0", true, false, 201,
                          "00000005"},
        CasoPrimeiraLinha{"TamanhoDoArquivoComTudoErrado", 160, 5, "01", "3.0", false, false, 76,
                          "00000001"},
        CasoPrimeiraLinha{"SequenciaSemCabecalho", 160, 5, "01", "3.0", false, true, 166,
                          "00000001"},
        CasoPrimeiraLinha{"SemCabecalhoComVersaoErrada", 160, 1, "01", "3.0", false, true, 86,
                          "00000001"},
        CasoPrimeiraLinha{"VersaoErrada", 160, 1, "00", "3.0", false, true, 71, "00000001"}),
    [](const ::testing::TestParamInfo<CasoPrimeiraLinha>& info) { return info.param.nome; });

TEST_F(ExecucaoNotas, LinhaDeTamanhoErradoMudaOTamanhoDoArquivo) {
  const Registro& cabecalho = arquivo.CabecalhoV1();
  arquivo.TR01();
  Registro nota(160);
  nota.Numero(1, 8, 3).Campo(9, 2, "10");
  arquivo.Bruta(nota.ComLargura(159));
  EXPECT_EQ(Valida(), 8);
  EXPECT_EQ(Gravadas(), Advertencias().Linha(76, cabecalho.Texto(), "00000001").Texto());
}

TEST_F(ExecucaoNotas, SequenciaErradaPara) {
  arquivo.CabecalhoV1();
  arquivo.TR01();
  Registro& nota = arquivo.Novo("10");
  nota.Numero(1, 8, 4);
  arquivo.TR98();
  EXPECT_EQ(Valida(), 8);
  EXPECT_EQ(Gravadas(), Advertencias().Linha(166, nota.Texto(), "00000003").Texto());
}

TEST_F(ExecucaoNotas, SequenciaComLetrasPara) {
  arquivo.CabecalhoV1();
  Registro& abertura = arquivo.TR01();
  abertura.Campo(1, 8, "0000002A");
  EXPECT_EQ(Valida(), 8);
  EXPECT_EQ(Gravadas(), Advertencias().Linha(166, abertura.Texto(), "00000002").Texto());
}

TEST_F(ExecucaoNotas, TipoDeRegistroDesconhecidoPara) {
  for (const char* tipo : {"11", "02", "  ", "1 ", "9A", "50"}) {
    DiretorioTemporario outro;
    ArquivoNotas comTipo;
    comTipo.CabecalhoV1();
    const Registro& registro = comTipo.Novo(tipo);
    std::string numero;
    Validacao v;
    EXPECT_EQ(v.Valida_Dados(comTipo.Grava(outro), numero, outro.Texto()), 8) << tipo;
    EXPECT_EQ(LeBytes(outro.Advertencias()),
              Advertencias().Linha(78, registro.Texto(), "00000002").Texto())
        << tipo;
  }
}

TEST_F(ExecucaoNotas, SegundoCabecalhoPara) {
  arquivo.CabecalhoV1();
  arquivo.TR01();
  const Registro& segundo = arquivo.CabecalhoV1();
  EXPECT_EQ(Valida(), 8);
  EXPECT_EQ(Gravadas(), Advertencias().Linha(87, segundo.Texto(), "00000003").Texto());
}

TEST_F(ExecucaoNotas, PrimeiraLinhaSemCabecalho) {
  const Registro& abertura = arquivo.TR01();
  arquivo.Novo("10");
  EXPECT_EQ(Valida(), 8);
  EXPECT_EQ(Gravadas(), Advertencias().Linha(86, abertura.Texto(), "00000001").Texto());
  EXPECT_EQ(numeroRemessa, "");
}

TEST_F(ExecucaoNotas, PrimeiraLinhaComSequenciaErrada) {
  Registro& cabecalho = arquivo.CabecalhoV1();
  cabecalho.Numero(1, 8, 2);
  EXPECT_EQ(Valida(), 8);
  EXPECT_EQ(Gravadas(), Advertencias().Linha(166, cabecalho.Texto(), "00000001").Texto());
}

TEST_F(ExecucaoNotas, ArquivoComFinalDeLinhaSoLFTemFormatoInvalido) {
  const Registro& cabecalho = arquivo.CabecalhoV1();
  GrupoCompleto(arquivo);
  arquivo.TR99();
  const std::string caminho = diretorio.Arquivo("lf.txt");
  GravaBytes(caminho, JuntaLinhas(arquivo.Linhas(), "\n"));
  EXPECT_EQ(validacao.Valida_Dados(caminho, numeroRemessa, diretorio.Texto()), 8);
  EXPECT_EQ(Gravadas(), Advertencias().Linha(76, cabecalho.Texto(), "00000001").Texto());
}

TEST_F(ExecucaoNotas, ArquivoDeUmaSoLinhaSemFimTemFormatoInvalido) {
  const Registro& cabecalho = arquivo.CabecalhoV1();
  const std::string caminho = diretorio.Arquivo("sem-fim.txt");
  GravaBytes(caminho, cabecalho.Texto());
  EXPECT_EQ(validacao.Valida_Dados(caminho, numeroRemessa, diretorio.Texto()), 8);
  EXPECT_EQ(Gravadas(), Advertencias().Linha(76, cabecalho.Texto(), "00000001").Texto());
}

TEST_F(ExecucaoNotas, ArquivoVazio) {
  const std::string caminho = diretorio.Arquivo("vazio.txt");
  GravaBytes(caminho, "");
  EXPECT_EQ(validacao.Valida_Dados(caminho, numeroRemessa, diretorio.Texto()), 8);
  // Nothing was read: the warning carries a blank line, and the blank sequence columns as
  // its number.
  EXPECT_EQ(Gravadas(), Advertencias().Linha(77, std::string(160, ' '), "        ").Texto());
}

TEST_F(ExecucaoNotas, VersaoDesconhecidaPara) {
  Registro& cabecalho = arquivo.CabecalhoV1();
  cabecalho.Campo(74, 10, "3.0");
  GrupoCompleto(arquivo);
  arquivo.TR99();
  EXPECT_EQ(Valida(), 8);
  EXPECT_EQ(Gravadas(), Advertencias().Linha(71, cabecalho.Texto(), "00000001").Texto());
}

TEST_F(ExecucaoNotas, DiretorioDeTrabalhoInexistenteOuVazio) {
  arquivo.CabecalhoV1();
  const std::string caminho = arquivo.Grava(diretorio);
  EXPECT_EQ(validacao.Valida_Dados(caminho, numeroRemessa, diretorio.Arquivo("nao-existe")), 9);
  EXPECT_EQ(validacao.Valida_Dados(caminho, numeroRemessa, ""), 9);
  EXPECT_EQ(validacao.Valida_Dados(caminho, numeroRemessa, caminho), 9);
  EXPECT_FALSE(diretorio.TemAdvertencias());
}

TEST_F(ExecucaoNotas, ArquivoInexistenteApagaAdvertenciasAntigas) {
  GravaBytes(diretorio.Advertencias(), "antiga\r\n");
  EXPECT_EQ(
      validacao.Valida_Dados(diretorio.Arquivo("nao-existe.txt"), numeroRemessa, diretorio.Texto()),
      9);
  EXPECT_FALSE(diretorio.TemAdvertencias());
}

TEST_F(ExecucaoNotas, ArquivoDeAdvertenciasNaoSobrescreveAEntrada) {
  arquivo.CabecalhoV1();
  const std::string conteudo = JuntaLinhas(arquivo.Linhas());
  GravaBytes(diretorio.Advertencias(), conteudo);
  EXPECT_EQ(validacao.Valida_Dados(diretorio.Advertencias(), numeroRemessa, diretorio.Texto()), 9);
  EXPECT_EQ(LeBytes(diretorio.Advertencias()), conteudo);
}

TEST_F(ExecucaoNotas, CabecalhoRecusadoNaoDevolveONumeroDaRemessa) {
  Registro& cabecalho = arquivo.CabecalhoV1();
  cabecalho.Campo(35, 25, "");
  numeroRemessa = "antes";
  EXPECT_EQ(Valida(), 8);
  EXPECT_EQ(numeroRemessa, "antes");
}

// Structure rules between the records of a group.
struct CasoEstrutura {
  const char* nome;
  std::vector<std::string> tipos;  // records after the header, before the trailer
  int16_t status;
  std::vector<std::pair<int, int>> advertencias;  // code and 1-based line
};

class RegrasDeEstrutura : public TesteNotas, public ::testing::WithParamInterface<CasoEstrutura> {};

TEST_P(RegrasDeEstrutura, AdvertenciasNaLinhaDoRegistro) {
  const CasoEstrutura& caso = GetParam();
  arquivo.CabecalhoV1();
  for (const std::string& tipo : caso.tipos) {
    if (tipo == "01") {
      arquivo.TR01();
    } else if (tipo == "98") {
      arquivo.TR98();
    } else if (tipo == "10") {
      arquivo.TR10Valido();
    } else if (tipo == "20") {
      arquivo.TR20Valido();
    } else if (tipo == "40") {
      arquivo.TR40Valido();
    } else {
      arquivo.Novo(tipo);
    }
  }
  arquivo.TR99();
  EXPECT_EQ(Valida(), caso.status);
  Advertencias esperado;
  for (const auto& [codigo, linha] : caso.advertencias) {
    char numero[16];
    std::snprintf(numero, sizeof numero, "%08d", linha);
    esperado.Linha(codigo, arquivo.Linha(static_cast<std::size_t>(linha - 1)).Texto(), numero);
  }
  EXPECT_EQ(Gravadas(), esperado.Texto());
}

// The records are ones their checks accept in a group with a note, and every block has its item.
// A TR 20 in a group without notes has no counterpart or UF of a note to agree with, so its check
// tells 106 and 115 after the structure warning; a TR 40 there is drawn up before the group's
// earliest note, so its check tells 184.
INSTANTIATE_TEST_SUITE_P(
    ExecucaoNotas, RegrasDeEstrutura,
    ::testing::Values(
        CasoEstrutura{
            "GrupoCompleto", {"01", "10", "15", "20", "25", "30", "35", "40", "98"}, 0, {}},
        CasoEstrutura{
            "DoisGrupos", {"01", "10", "15", "98", "01", "10", "15", "10", "15", "98"}, 0, {}},
        CasoEstrutura{
            "TR20SemTR10", {"01", "20", "25", "10", "15", "98"}, 1, {{154, 3}, {106, 3}, {115, 3}}},
        CasoEstrutura{"TR25SemTR20", {"01", "10", "15", "25", "98"}, 1, {{155, 5}}},
        CasoEstrutura{"TR25DepoisDeTR30",
                      {"01", "10", "15", "20", "25", "30", "25", "35", "98"},
                      1,
                      {{155, 8}}},
        CasoEstrutura{"TR30SemTR10", {"01", "30", "35", "10", "15", "98"}, 1, {{156, 3}}},
        CasoEstrutura{"TR40SemTR10", {"01", "40", "10", "15", "98"}, 1, {{156, 3}, {184, 3}}},
        CasoEstrutura{"TR35SemTR30", {"01", "10", "15", "35", "98"}, 1, {{157, 5}}},
        CasoEstrutura{
            "TR15DepoisDeTR20", {"01", "10", "15", "20", "25", "15", "98"}, 1, {{153, 7}}},
        CasoEstrutura{"TR98SemTR10", {"01", "98"}, 1, {{141, 3}, {160, 3}}},
        CasoEstrutura{"TR10AntesDeTR01", {"10", "01", "10", "15", "98"}, 1, {{148, 2}}},
        CasoEstrutura{"TR10DepoisDeTR98", {"01", "10", "15", "98", "10"}, 1, {{148, 6}, {148, 6}}},
        CasoEstrutura{
            "TR01ComGrupoAberto", {"01", "10", "15", "01", "10", "15", "98"}, 1, {{148, 5}}},
        CasoEstrutura{"TR99ComGrupoAberto", {"01", "10", "15"}, 1, {{148, 5}}},
        CasoEstrutura{"GrupoErradoDepoisCorreto",
                      {"01", "20", "25", "10", "15", "98", "01", "10", "15", "98"},
                      1,
                      {{154, 3}, {106, 3}, {115, 3}}}),
    [](const ::testing::TestParamInfo<CasoEstrutura>& info) { return info.param.nome; });

TEST_F(ExecucaoNotas, RegistroDepoisDoTrailerContinuaLendo) {
  arquivo.CabecalhoV1();
  GrupoCompleto(arquivo);
  arquivo.TR99();
  const Registro& nota = arquivo.TR10Valido();
  EXPECT_EQ(Valida(), 1);
  EXPECT_EQ(Gravadas(), Advertencias()
                            .Linha(147, nota.Texto(), "00000007")
                            .Linha(148, nota.Texto(), "00000007")
                            .Linha(148, nota.Texto(), "00000007")
                            .Texto());
}

TEST_F(ExecucaoNotas, ErroDeEstruturaDepoisDeErroDeGrupoTerminaEm8) {
  arquivo.CabecalhoV1();
  arquivo.TR01();
  const Registro& liquidacao = arquivo.TR20Valido();
  const Registro& errado = arquivo.Novo("77");
  EXPECT_EQ(Valida(), 8);
  // Without a note in the group the document's check also tells its issuer and UF.
  EXPECT_EQ(Gravadas(), Advertencias()
                            .Linha(154, liquidacao.Texto(), "00000003")
                            .Linha(106, liquidacao.Texto(), "00000003")
                            .Linha(115, liquidacao.Texto(), "00000003")
                            .Linha(78, errado.Texto(), "00000004")
                            .Texto());
}

// Progress: the share is counted in 128-byte units against 162-byte lines.
std::vector<double> ProgressoEsperado(int linhas) {
  std::vector<double> esperado;
  const int passo = linhas / 100;
  for (int lidas = 1; lidas < linhas; ++lidas) {
    const long posicao = 162L * lidas / 128;
    if (passo == 0 || posicao % passo == 0) esperado.push_back(posicao * 100.0 / linhas);
  }
  return esperado;
}

void ArquivoDeLinhas(ArquivoNotas& arquivo, int linhas) {
  arquivo.CabecalhoV1();
  arquivo.TR01();
  arquivo.TR10Valido();
  for (int i = 0; i < linhas - 5; ++i)
    arquivo.Novo("15");
  arquivo.TR98();
  arquivo.TR99();
}

TEST_F(ExecucaoNotas, ProgressoAntesDeCadaLinhaAbaixoDeCemLinhas) {
  ArquivoDeLinhas(arquivo, 99);
  std::vector<double> recebido;
  validacao.Progress = [&](double& porcentagem) { recebido.push_back(porcentagem); };
  EXPECT_EQ(Valida(), 0);
  const std::vector<double> esperado = ProgressoEsperado(99);
  ASSERT_EQ(recebido.size(), 98u);
  ASSERT_EQ(recebido.size(), esperado.size());
  for (std::size_t i = 0; i < esperado.size(); ++i)
    EXPECT_DOUBLE_EQ(recebido[i], esperado[i]);
  // Positions count 128-byte units against 162-byte lines: the figure runs past 100.
  EXPECT_GT(recebido.back(), 100);
}

TEST_F(ExecucaoNotas, ProgressoSoNosMultiplosDoPassoComCemLinhasOuMais) {
  ArquivoDeLinhas(arquivo, 250);
  std::vector<double> recebido;
  validacao.Progress = [&](double& porcentagem) { recebido.push_back(porcentagem); };
  EXPECT_EQ(Valida(), 0);
  const std::vector<double> esperado = ProgressoEsperado(250);
  EXPECT_LT(esperado.size(), 249u);
  ASSERT_EQ(recebido.size(), esperado.size());
  for (std::size_t i = 0; i < esperado.size(); ++i)
    EXPECT_DOUBLE_EQ(recebido[i], esperado[i]);
}

// A step of 12 positions, which the position passes over now and then without landing on it.
TEST_F(ExecucaoNotas, ProgressoNumArquivoMaior) {
  ArquivoDeLinhas(arquivo, 1234);
  std::vector<double> recebido;
  validacao.Progress = [&](double& porcentagem) { recebido.push_back(porcentagem); };
  EXPECT_EQ(Valida(), 0);
  const std::vector<double> esperado = ProgressoEsperado(1234);
  ASSERT_EQ(recebido.size(), esperado.size());
  for (std::size_t i = 0; i < esperado.size(); ++i)
    EXPECT_DOUBLE_EQ(recebido[i], esperado[i]);
}

TEST_F(ExecucaoNotas, ObjetoServeParaVariasExecucoes) {
  arquivo.CabecalhoV1();
  arquivo.TR01();
  arquivo.TR20Valido();
  const std::string comErro = arquivo.Grava(diretorio, "com-erro.txt");
  ArquivoNotas limpo;
  limpo.CabecalhoV1();
  GrupoCompleto(limpo);
  limpo.TR99();
  const std::string semErro = limpo.Grava(diretorio, "limpo.txt");
  EXPECT_EQ(validacao.Valida_Dados(comErro, numeroRemessa, diretorio.Texto()), 8);
  EXPECT_EQ(validacao.Valida_Dados(semErro, numeroRemessa, diretorio.Texto()), 0);
  EXPECT_FALSE(diretorio.TemAdvertencias());
}

}  // namespace
}  // namespace quorv::teste
