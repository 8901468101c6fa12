-- Multiplies an IEEE single by two to the power bb, a signed integer: exact, or infinite when too large and zero when
-- below the normal numbers, for every bb; for which operands and by which steps is said at xfc_scale_ieee, which it
-- consists of.
-- Latency 2 cycles.
library ieee;
use ieee.std_logic_1164.all;

entity fp_ldexp is
  port (sysclk, reset, enable : in std_logic;
        signin : in std_logic;
        exponentin : in std_logic_vector(8 downto 1);
        mantissain : in std_logic_vector(23 downto 1);
        bb : in std_logic_vector(32 downto 1);
        signout : out std_logic;
        exponentout : out std_logic_vector(8 downto 1);
        mantissaout : out std_logic_vector(23 downto 1));
end fp_ldexp;

architecture rtl of fp_ldexp is
  signal scaled : std_logic_vector(31 downto 0);   -- sign, exponent, fraction
begin
  scale_ieee : entity work.xfc_scale_ieee generic map (8, 23)
    port map (sysclk, enable, signin, exponentin, mantissain, bb, scaled);
  signout <= scaled(31);
  exponentout <= scaled(30 downto 23);
  mantissaout <= scaled(22 downto 0);
end rtl;
