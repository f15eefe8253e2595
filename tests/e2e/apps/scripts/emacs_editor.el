;;; Makes Emacs tell each change of its buffer over a local socket.  -*- lexical-binding: t -*-

(require 'seq)

(defvar editor-clear-count 0)
(defvar editor-told nil "What was told last.")
(defvar editor-channel nil)

(defun editor-units (text)
  "The UTF-16 units of TEXT as four hexadecimal digits each."
  (mapconcat (lambda (byte) (format "%02x" byte)) (encode-coding-string text 'utf-16be) ""))

(defun editor-tell ()
  (with-current-buffer "*editor*"
    (let ((report (format "%d %d %s\n" editor-clear-count
                          (/ (length (editor-units (buffer-substring-no-properties
                                                    (point-min) (point))))
                             4)
                          (editor-units (buffer-string)))))
      (unless (equal report editor-told)
        (setq editor-told report)
        (process-send-string editor-channel report)))))

(defun editor-tell-at-rest ()
  (unless (input-pending-p) (editor-tell)))

(defun editor-empty (_channel commands)
  (setq editor-clear-count (+ editor-clear-count (seq-count (lambda (c) (eq c ?\n)) commands)))
  (with-current-buffer "*editor*" (erase-buffer))
  (editor-tell))

(setq inhibit-startup-screen t)
(electric-indent-mode -1)
(switch-to-buffer "*editor*")
(fundamental-mode)
(setq editor-channel
      (make-network-process :name "channel" :family 'local :service (getenv "ZARVY_E2E_CHANNEL")
                            :coding 'binary :filter #'editor-empty :noquery t))
(add-hook 'post-command-hook #'editor-tell-at-rest)
(run-with-timer 0.1 0.1 #'editor-tell-at-rest)
(editor-tell)
