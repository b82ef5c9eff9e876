// The state-registration library is closed code of unknown thread safety: runs on several threads
// at once never call it from two threads at the same time. The library loaded here counts every
// call that finds another one still inside.
#include <dlfcn.h>

#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "arquivos.hpp"
#include "quorvvalida/geral.hpp"
#include "quorvvalida/validacao.hpp"

namespace quorv::teste {
namespace {

using Contador = long (*)();

Contador Funcao(const char* nome) {
  void* modulo = dlopen(QUORV_BIBLIOTECA_REENTRADA, RTLD_NOW | RTLD_NOLOAD);
  if (modulo == nullptr) return nullptr;
  auto funcao = reinterpret_cast<Contador>(dlsym(modulo, nome));
  dlclose(modulo);
  return funcao;
}

TEST(InscricaoReentrada, ChamadasDeVariasThreadsNuncaSeSobrepoem) {
  ASSERT_TRUE(CarregarBibliotecaInscricao(QUORV_BIBLIOTECA_REENTRADA));
  const Contador chamadas = Funcao("QuorvChamadas");
  const Contador sobreposicoes = Funcao("QuorvSobreposicoes");
  ASSERT_NE(chamadas, nullptr);
  ASSERT_NE(sobreposicoes, nullptr);

  // Whole invoice runs, one per thread, each in its own working directory, and the shared
  // routine called directly from as many threads again.
  constexpr int kThreads = 4;
  std::vector<DiretorioTemporario> diretorios(kThreads);
  std::vector<int16_t> status(kThreads, -1);
  std::vector<int> aceitas(kThreads, 0);
  std::vector<std::thread> threads;
  for (int i = 0; i < kThreads; ++i) {
    threads.emplace_back([&, i] {
      Validacao validacao;
      std::string numero;
      status[static_cast<std::size_t>(i)] =
          validacao.Valida_Dados(QUORV_AMOSTRA_NOTAS, numero, diretorios[i].Texto());
    });
    threads.emplace_back([&, i] {
      for (int vez = 0; vez < 300; ++vez) {
        aceitas[static_cast<std::size_t>(i)] += ValidaInscricaoEstadual("1234567895", "QZ") ? 1 : 0;
      }
    });
  }
  for (std::thread& thread : threads)
    thread.join();

  for (int i = 0; i < kThreads; ++i) {
    EXPECT_EQ(status[static_cast<std::size_t>(i)], 0);
    EXPECT_EQ(aceitas[static_cast<std::size_t>(i)], 300);
  }
  EXPECT_GT(chamadas(), kThreads * 300);
  EXPECT_EQ(sobreposicoes(), 0);
}

}  // namespace
}  // namespace quorv::teste
