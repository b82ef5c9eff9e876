// A file of 1 GiB without a single line break: every entry point answers, quickly, with memory
// far below the file's size, since a line is never held whole. Each run is a process of its own,
// whose peak memory the system reports when it ends.
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "advertencias.hpp"
#include "arquivo_fichas.hpp"
#include "arquivo_notas.hpp"
#include "arquivos.hpp"
#include "quorvvalida/cls_quorv_msg.hpp"
#include "quorvvalida/cls_quorv_msg_fichas.hpp"
#include "robustez.hpp"

#ifdef __unix__
#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>

extern char** environ;
#endif

namespace quorv::teste {
namespace {

constexpr std::uintmax_t kTamanho = std::uintmax_t{1} << 30;
// Peak resident memory allowed to a run, in KiB: a sixteenth of the file.
constexpr long kMemoriaMaxima = 64 * 1024;
constexpr double kSegundosMaximos = 60;

struct Medida {
  int codigo = -1;
  std::string saida;
  long memoriaKiB = 0;
  double segundos = 0;
};

// Runs the helper with the arguments; its output goes to the file named.
Medida Roda(const std::vector<std::string>& argumentos, const std::string& saida) {
  Medida medida;
#ifdef __unix__
  std::vector<char*> argv;
  std::string programa = QUORV_AUXILIAR;
  argv.push_back(programa.data());
  std::vector<std::string> copias = argumentos;
  for (std::string& argumento : copias)
    argv.push_back(argumento.data());
  argv.push_back(nullptr);
  posix_spawn_file_actions_t acoes;
  posix_spawn_file_actions_init(&acoes);
  posix_spawn_file_actions_addopen(&acoes, 1, saida.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
  const auto inicio = std::chrono::steady_clock::now();
  pid_t processo = 0;
  if (posix_spawn(&processo, programa.c_str(), &acoes, nullptr, argv.data(), environ) == 0) {
    int estado = 0;
    rusage uso{};
    if (wait4(processo, &estado, 0, &uso) == processo && WIFEXITED(estado)) {
      medida.codigo = WEXITSTATUS(estado);
      medida.memoriaKiB = uso.ru_maxrss;
    }
  }
  medida.segundos =
      std::chrono::duration<double>(std::chrono::steady_clock::now() - inicio).count();
  posix_spawn_file_actions_destroy(&acoes);
  medida.saida = LeBytes(saida);
#else
  static_cast<void>(argumentos);
  static_cast<void>(saida);
#endif
  return medida;
}

struct CasoGigante {
  const char* nome;
  const char* tipo;
  // The bytes at the file's start; NUL bytes fill it up to 1 GiB.
  std::string inicio;
  std::string saida;
  // The warnings file the run leaves; empty when none.
  std::string advertencias;
  bool retorno = false;
  // For the readers: the catalogue (invoices or forms) and the code whose text ends the output.
  bool descricaoDeFichas = false;
  int16_t codigo = 0;
};

void PrintTo(const CasoGigante& caso, std::ostream* saida) {
  *saida << caso.nome;
}

std::string CabecalhoNotas() {
  ArquivoNotas arquivo;
  return arquivo.CabecalhoV1().Texto();
}

std::string CabecalhoFichas() {
  ArquivoFichas arquivo;
  return arquivo.Cabecalho().Texto();
}

std::vector<CasoGigante> Casos() {
  const std::string notas = CabecalhoNotas();
  const std::string fichas = CabecalhoFichas();
  return {
      {"Notas", "notas", notas, "status=8 remessa=\n",
       Advertencias().Linha(77, notas, "00000001").Texto()},
      {"Fichas", "fichas", fichas, "status=8 grave=0 remessa=\n",
       Advertencias().Linha(2, fichas, "00000001").Texto()},
      {"WebNotas", "web-notas", notas, "resposta=0 remessa=\n", "", true},
      {"WebFichas", "web-fichas", fichas, "resposta=0 remessa=\n", "", true},
      // A warnings line whose line number field runs on into the NUL bytes: no number.
      {"LeitorNotas", "leitor-notas", "77#0#0#" + notas + "#00000001",
       "total=1 fim=1 linha=0 tr=00 descricao=", "", false, false, 77},
      {"LeitorFichas", "leitor-fichas", "2#0#0#" + fichas + "#00000001",
       "total=1 fim=1 linha=0 tr=001 descricao=", "", false, true, 2},
  };
}

class ArquivoGigante : public ::testing::TestWithParam<CasoGigante> {};

TEST_P(ArquivoGigante, RespondeComPoucaMemoria) {
#ifndef __unix__
  GTEST_SKIP() << "medida de memória de processo só em sistemas Unix";
#endif
  const CasoGigante& caso = GetParam();
  DiretorioTemporario diretorio;
  const std::string caminho = diretorio.Arquivo("gigante.txt");
  GravaBytes(caminho, caso.inicio);
  // Sparse: the NUL bytes take no room on the disk, and the file is made at once.
  std::filesystem::resize_file(std::filesystem::u8path(caminho), kTamanho);
  Entradas entradas;
  entradas.Registra(caminho);

  const Medida medida = Roda({caso.tipo, caminho, diretorio.Texto()}, diretorio.Arquivo("saida"));
  EXPECT_EQ(medida.codigo, 0);
  std::string saida = caso.saida;
  if (caso.codigo != 0) {
    saida += caso.descricaoDeFichas ? clsQuorvMsgFichas().MensagemAdvertenciaFichas(caso.codigo)
                                    : clsQuorvMsg().MensagemAdvertencia(caso.codigo);
    saida += "\n";
  }
  EXPECT_EQ(medida.saida, saida);
  EXPECT_LT(medida.memoriaKiB, kMemoriaMaxima);
  EXPECT_LT(medida.segundos, kSegundosMaximos);
  EXPECT_EQ(LeBytes(diretorio.Advertencias()), caso.advertencias);
  EXPECT_EQ(std::filesystem::exists(std::filesystem::u8path(diretorio.Arquivo("RETORNO.TXT"))),
            caso.retorno);
  entradas.Confere();
  RecordProperty("memoria_kib", std::to_string(medida.memoriaKiB));
  RecordProperty("segundos", std::to_string(medida.segundos));
}

INSTANTIATE_TEST_SUITE_P(Robustez, ArquivoGigante, ::testing::ValuesIn(Casos()),
                         [](const ::testing::TestParamInfo<CasoGigante>& info) {
                           return info.param.nome;
                         });

}  // namespace
}  // namespace quorv::teste
