// How many validations the service takes at once: a request is admitted before its body is
// read (so that a busy service refuses it before the client sends a large file), waits for one
// of the workers once its file is on disk, and gives its place back when it is done.
#ifndef QUORVVALIDA_TOOLS_SERVIR_ADMISSAO_HPP_
#define QUORVVALIDA_TOOLS_SERVIR_ADMISSAO_HPP_

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <mutex>
#include <optional>

namespace quorv::servico {

class Admissao {
 public:
  // At most `trabalhadores` validations run at once, and at most `fila` more requests are
  // admitted behind them (receiving their file or waiting for a worker).
  Admissao(std::size_t trabalhadores, std::size_t fila);

  // A place held by one admitted request; giving it back wakes the next waiting request.
  class Vaga {
   public:
    Vaga(Vaga&& outra) noexcept;
    Vaga& operator=(Vaga&&) = delete;
    Vaga(const Vaga&) = delete;
    Vaga& operator=(const Vaga&) = delete;
    ~Vaga();
    // Waits, in the order the requests got here, until a worker is free; the request then
    // counts as a validation in progress until the place is given back.
    void AguardaTrabalhador();

   private:
    friend class Admissao;
    explicit Vaga(Admissao* admissao) : admissao_(admissao) {}
    Admissao* admissao_;
    bool validando_ = false;
    std::chrono::steady_clock::time_point inicio_;
  };

  // A place, or nothing when every place is taken.
  std::optional<Vaga> Reserva();
  // True when a request arriving now would get a place.
  bool TemVaga() const;

  struct Estado {
    std::size_t trabalhadores = 0;
    std::size_t fila = 0;
    std::size_t admitidas = 0;   // receiving, waiting or validating
    std::size_t aguardando = 0;  // file on disk, waiting for a worker
    std::size_t validando = 0;
  };
  Estado Consulta() const;

  // How long a refused client should wait before trying again, in whole seconds: the time the
  // requests ahead of it would take at the pace of the recent validations, at least one.
  std::int64_t SegundosParaTentarDeNovo() const;

 private:
  void Libera(bool validando, std::chrono::steady_clock::duration duracao);

  const std::size_t trabalhadores_;
  const std::size_t fila_;
  mutable std::mutex trava_;
  std::condition_variable livre_;
  std::size_t admitidas_ = 0;
  std::size_t validando_ = 0;
  std::deque<std::uint64_t> esperando_;
  std::uint64_t proximaSenha_ = 0;
  // Mean length of the recent validations, in seconds (a moving average).
  double duracaoMedia_ = 1.0;
};

}  // namespace quorv::servico

#endif  // QUORVVALIDA_TOOLS_SERVIR_ADMISSAO_HPP_
