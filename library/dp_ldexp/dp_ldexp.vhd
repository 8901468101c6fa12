-- Multiplies an IEEE double by two to the power bb, a signed integer: exact, or infinite when too large and zero when
-- below the normal numbers, for every bb; for which operands and by which steps is said at xfc_scale_ieee, which it
-- consists of.
-- Latency 2 cycles.
library ieee;
use ieee.std_logic_1164.all;

entity dp_ldexp is
  port (sysclk, reset, enable : in std_logic;
        signin : in std_logic;
        exponentin : in std_logic_vector(11 downto 1);
        mantissain : in std_logic_vector(52 downto 1);
        bb : in std_logic_vector(32 downto 1);
        signout : out std_logic;
        exponentout : out std_logic_vector(11 downto 1);
        mantissaout : out std_logic_vector(52 downto 1));
end dp_ldexp;

architecture rtl of dp_ldexp is
  signal scaled : std_logic_vector(63 downto 0);   -- sign, exponent, fraction
begin
  scale_ieee : entity work.xfc_scale_ieee generic map (11, 52)
    port map (sysclk, enable, signin, exponentin, mantissain, bb, scaled);
  signout <= scaled(63);
  exponentout <= scaled(62 downto 52);
  mantissaout <= scaled(51 downto 0);
end rtl;
