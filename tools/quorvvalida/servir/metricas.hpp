// The service's counters, told in the Prometheus text format.
#ifndef QUORVVALIDA_TOOLS_SERVIR_METRICAS_HPP_
#define QUORVVALIDA_TOOLS_SERVIR_METRICAS_HPP_

#include <array>
#include <cstdint>
#include <map>
#include <mutex>
#include <string>
#include <tuple>

#include "admissao.hpp"

namespace quorv::servico {

class Metricas {
 public:
  // One request answered: its route (the route's pattern, never the raw path), method, status
  // and how long it took from its headers to the last byte of its answer.
  void Requisicao(const std::string& rota, const std::string& metodo, int status, double segundos);
  // One file validated: "notas" or "fichas", its bytes and lines, the warnings it got (-1 when
  // they were not counted).
  void Validacao(const std::string& tipo, std::uint64_t bytes, std::uint64_t linhas,
                 std::int64_t advertencias);

  // Everything, with the admission's gauges, as Prometheus scrapes it.
  std::string Texto(const Admissao::Estado& admissao) const;

  // Upper bounds of the latency histogram, in seconds.
  static constexpr std::array<double, 14> kLimites = {0.001, 0.005, 0.01, 0.025, 0.05, 0.1, 0.25,
                                                      0.5,   1,     2.5,  5,     10,   30,  120};

 private:
  struct Histograma {
    std::array<std::uint64_t, kLimites.size()> baldes{};
    std::uint64_t total = 0;
    double soma = 0;
  };
  struct PorTipo {
    std::uint64_t arquivos = 0;
    std::uint64_t bytes = 0;
    std::uint64_t linhas = 0;
    std::uint64_t advertencias = 0;
  };
  mutable std::mutex trava_;
  std::map<std::tuple<std::string, std::string, int>, std::uint64_t> requisicoes_;
  std::map<std::string, Histograma> duracoes_;
  std::map<std::string, PorTipo> tipos_;
};

}  // namespace quorv::servico

#endif  // QUORVVALIDA_TOOLS_SERVIR_METRICAS_HPP_
