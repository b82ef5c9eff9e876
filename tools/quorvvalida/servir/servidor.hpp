// The validation service: an HTTP server over the component for web systems and batch
// pipelines. Every request validates in a private directory of its own; the service keeps
// nothing between requests, so it scales out by running more instances.
#ifndef QUORVVALIDA_TOOLS_SERVIR_SERVIDOR_HPP_
#define QUORVVALIDA_TOOLS_SERVIR_SERVIDOR_HPP_

#include <httplib.h>

#include <atomic>
#include <chrono>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "admissao.hpp"
#include "autorizacao.hpp"
#include "configuracao.hpp"
#include "http.hpp"
#include "metricas.hpp"
#include "parametros.hpp"
#include "recepcao.hpp"
#include "rotas.hpp"
#include "temporario.hpp"

namespace quorv::servico {

class Servidor {
 public:
  // `configuracao` comes checked, its workers and queue sized; `base` is the service's own
  // temporary directory, under which each request gets one of its own.
  Servidor(const Configuracao& configuracao, std::optional<Autorizacao> autorizacao,
           std::unique_ptr<DiretorioTemporario> base);
  ~Servidor();
  Servidor(const Servidor&) = delete;
  Servidor& operator=(const Servidor&) = delete;

  // Binds the address; the port bound, or -1 with the reason in `erro`.
  int Liga(std::string& erro);
  // Serves until Para is called, then answers the requests already being handled and returns.
  bool Atende();
  // Stops taking connections, and new work on the connections already open; the requests in
  // progress go on to their answers. Safe from any thread.
  void Para();

 private:
  // What the service keeps about a request from its headers to its log line.
  struct Contexto {
    std::chrono::steady_clock::time_point inicio;
    std::string id;
    const Rota* rota = nullptr;
    bool pagina = false;
    std::uint64_t recebidos = 0;
    std::shared_ptr<std::uint64_t> enviados;  // bytes of an answer sent piece by piece
  };

  // Checks what can be checked before a body is read (route, token, length, types, parameters,
  // room); false when the answer is already in `res`.
  bool Triagem(const httplib::Request& req, httplib::Response& res);
  void Registra(const httplib::Request& req, const httplib::Response& res);
  // The routes that receive a file: the upload, the wait for a worker, the run and its answer.
  void Recebe(const Rota& rota, const httplib::Request& req, httplib::Response& res,
              const httplib::ContentReader& leitor);
  // The answer of a file received and ready in `diretorio`, the thread already there.
  void Valida(const Rota& rota, const httplib::Request& req, httplib::Response& res,
              const std::shared_ptr<DiretorioTemporario>& diretorio,
              std::optional<Admissao::Vaga>& vaga, const Recepcao& recepcao);
  void ValidaWeb(const Rota& rota, const httplib::Request& req, httplib::Response& res,
                 const std::shared_ptr<DiretorioTemporario>& diretorio,
                 std::optional<Admissao::Vaga>& vaga, const Recepcao& recepcao);
  void Consulta(const Rota& rota, const httplib::Request& req, httplib::Response& res);
  // A file of the request's directory as the answer's body, sent a block at a time; the
  // directory goes away when the answer is done with it.
  void EnviaArquivo(const httplib::Request& req, httplib::Response& res,
                    const std::shared_ptr<DiretorioTemporario>& diretorio,
                    const std::string& caminho, const std::string& tipoDeConteudo);
  // The bytes the answer to `req` has sent, counted as its pieces go out; and a piece's check
  // that the client is reading fast enough.
  std::shared_ptr<std::uint64_t> ContadorDeEnvio(const httplib::Request& req);
  bool EnvioNoPrazo(std::chrono::steady_clock::time_point inicio, std::uint64_t enviados) const;
  // The catalogues, read once: every code whose text the catalogue holds.
  void PreparaCatalogos();
  // 503 with Retry-After: every validation and the queue are taken.
  void RespondeOcupado(httplib::Response& res) const;

  Contexto& AbreContexto(const httplib::Request& req, httplib::Response& res);
  Contexto* ContextoDe(const httplib::Request& req);
  std::optional<Contexto> TiraContexto(const httplib::Request& req);
  std::string NovoId();

  const Configuracao configuracao_;
  const std::optional<Autorizacao> autorizacao_;
  const std::unique_ptr<DiretorioTemporario> base_;
  std::string pagina_;  // the browser page's folder; empty when it is not there
  httplib::Server servidor_;
  Admissao admissao_;
  Metricas metricas_;
  std::atomic<bool> encerrando_{false};
  std::atomic<int> escuta_{-1};  // the listening socket

  // The catalogues' texts, as JSON arrays of the tool's "mensagem" objects and as text lines.
  std::string catalogoNotas_;
  std::string catalogoFichas_;
  std::string catalogoNotasTexto_;
  std::string catalogoFichasTexto_;

  const std::string prefixoId_;
  std::atomic<std::uint64_t> contadorId_{0};
  std::mutex travaContextos_;
  std::map<std::string, Contexto> contextos_;
};

}  // namespace quorv::servico

#endif  // QUORVVALIDA_TOOLS_SERVIR_SERVIDOR_HPP_
