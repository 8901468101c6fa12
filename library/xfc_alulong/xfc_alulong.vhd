-- Adds two integers of 32 bits, or subtracts the second when addsub is 1; what does not fit is lost (modulo 2 ** 32).
--   step complement:  ones' complement of what is subtracted
--   step lower:       the low 16 bits
--   step upper:       the high 16 bits with the carry
-- Latency 3 cycles: a register behind each step.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity xfc_alulong is
  port (sysclk, reset, enable, addsub : in std_logic;
        aa : in std_logic_vector(32 downto 1);
        bb : in std_logic_vector(32 downto 1);
        cc : out std_logic_vector(32 downto 1));
end xfc_alulong;

architecture rtl of xfc_alulong is
  constant half : positive := 16;

  -- complement
  signal addend_d, augend, addend : std_logic_vector(32 downto 1);
  signal subtract_d, subtract : std_logic_vector(0 downto 0);

  -- lower
  signal lower_d, lower : std_logic_vector(half downto 0);
  signal upper_augend, upper_addend : std_logic_vector(half - 1 downto 0);

  -- upper
  signal upper_d : std_logic_vector(half - 1 downto 0);
  signal result_d : std_logic_vector(32 downto 1);
begin
  -- complement
  addend_d <= not bb when addsub = '1' else bb;
  subtract_d(0) <= addsub;

  complement_0 : entity work.xfc_register generic map (32, 1) port map (sysclk, enable, aa, augend);
  complement_1 : entity work.xfc_register generic map (32, 1) port map (sysclk, enable, addend_d, addend);
  complement_2 : entity work.xfc_register generic map (1, 1) port map (sysclk, enable, subtract_d, subtract);

  -- lower
  lower_d <= std_logic_vector(resize(unsigned(augend(half downto 1)), half + 1) + unsigned(addend(half downto 1)) +
                              unsigned(subtract));

  lower_0 : entity work.xfc_register generic map (half + 1, 1) port map (sysclk, enable, lower_d, lower);
  lower_1 : entity work.xfc_register generic map (half, 1)
    port map (sysclk, enable, augend(32 downto half + 1), upper_augend);
  lower_2 : entity work.xfc_register generic map (half, 1)
    port map (sysclk, enable, addend(32 downto half + 1), upper_addend);

  -- upper
  upper_d <= std_logic_vector(unsigned(upper_augend) + unsigned(upper_addend) + unsigned(lower(half downto half)));
  result_d <= upper_d & lower(half - 1 downto 0);

  upper_0 : entity work.xfc_register generic map (32, 1) port map (sysclk, enable, result_d, cc);
end rtl;
